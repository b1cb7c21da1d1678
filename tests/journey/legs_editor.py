"""The map editor: starts and ends on the main menu."""

LEGS = []
