#pragma once
// The in-race menu: a panel in the middle of the screen over the paused race, with a title and two
// choices, resuming and leaving the race. The race opens it (Escape or the pad's B) with the text
// of the leaving choice and the command that choice sends. Up and Down (keys or pad) or the mouse
// move the selection, Confirm, Space or a left click takes it, Back (Escape or B) resumes at once.
// The panel is drawn upright over the finished frame, whatever the race did to the picture.
#include <string>

class QmControls;
class VeInput;
class VeSurface;

class QmInRaceMenu {
public:
    enum Choice { Resume = 0, Leave = 1 };
    static constexpr int kPanelWidth = 380;
    static constexpr int kPanelHeight = 210;
    static constexpr int kChoiceWidth = 320;
    static constexpr int kChoiceHeight = 40;

    // Opens the menu with Resume selected.
    void Open(const std::string& title, const std::string& resumeText, const std::string& leaveText,
              const std::string& leaveCommand);
    void Close();
    bool IsOpen() const { return open; }
    int Selection() const { return selection; }

    // One frame of input while open: returns the leave command when leaving was chosen this frame
    // (the menu closes), empty otherwise (also when Resume closed it). The mouse is read in the
    // logical coordinates of a screen of the given size; input may be null.
    std::string Update(QmControls& controls, const VeInput* input, int screenWidth, int screenHeight);
    // The panel on a screen of that size; nothing when closed. pulse (0.8 to 1.1) brightens the
    // selected choice.
    void Draw(VeSurface& target, float pulse) const;

    // The area of a choice on a screen of the given size: its left, top, width and height.
    static void ChoiceArea(int choice, int screenWidth, int screenHeight, int& x, int& y, int& w, int& h);

private:
    int ChoiceUnder(int x, int y, int screenWidth, int screenHeight) const;

    bool open = false;
    int selection = Resume;
    std::string title;
    std::string resumeText;
    std::string leaveText;
    std::string leaveCommand;
};
