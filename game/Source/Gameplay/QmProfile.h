#pragma once
// profile.dat in the game folder: the player's character number as one plain line ("%i", no
// newline). A missing or unreadable file reads as character 0.
class QmProfile {
public:
    static int LoadProfile();
    static void SaveProfile(int character);
};
