#pragma once
// profile.dat in the game folder: the player's character number as one plain line ("%i", no
// newline). A missing, unreadable or damaged file (no number, or a negative one) reads as
// character 0. Saving replaces the file atomically, so a failed save keeps the old one.
class QmProfile {
public:
    static int LoadProfile();
    // False when the file could not be written (the caller tells the player).
    static bool SaveProfile(int character);
};
