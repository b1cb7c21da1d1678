#pragma once
// The play page (page 2): the tours in the left column, the maps of the selected tour in the right
// one, and a row of buttons at the foot (Play, Random run, Edit, Highscores, Manage, Back). Up and
// Down move in the focused column, Left and Right switch columns, Confirm on an unlocked map starts
// it; a locked map or tour can never be started and answers with the sound "Disabled". Keyboard,
// pad and mouse drive it alike; Escape or the pad's B goes back to the main menu.
//
// StartPlay begins a race in the coordinator's current play mode on the world's current map; the
// page's own Confirm first loads the chosen map and sets tour play.
//
// Copy mode (the editor's copy command): the title asks for the map to copy and the first button
// copies; choosing a map hands its blocks to the editor, Back gives up, and either returns to the
// editor. The other buttons are off meanwhile.
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <memory>

class QmPlayPage : public QmMenuPage {
public:
    QmPlayPage();
    ~QmPlayPage() override;
    QmPlayPage(const QmPlayPage&) = delete;
    QmPlayPage& operator=(const QmPlayPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // Every text the page shows now, with the room its box or button gives it.
    QmTextBoxes TextBoxes() const;
    // Remakes the title for the coordinator's play mode (and the shared-maps page's states).
    void RefreshTitle();
    // Forgets the mouse's last position and selects the first button and the left column.
    void ResetMouseAndSelection();
    // Reads the tours and maps again (after a race, a management change or a download), keeping
    // the selected tour and map where they still exist.
    void RebuildLists();
    // Begins a race in the current play mode; false when it could not begin.
    bool StartPlay(bool retry);
    int SelectedTour() const;
    int SelectedMap() const;
    // Copy mode, opened on the edited map's tour and map.
    void BeginCopyChoice(int tour, int map);
    bool CopyChoosing() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};
