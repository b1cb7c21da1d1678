"""Online: starts and ends on the main menu."""

LEGS = []
