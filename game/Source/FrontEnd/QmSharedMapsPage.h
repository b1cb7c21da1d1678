#pragma once
// The shared-maps page (page 7), for a player who is logged in to the online service. Its states:
//   1 the players who share maps, with their map counts (Confirm opens one player's maps);
//   2 one player's maps with name and size: Download saves the chosen map into the tour
//     "Downloads" and Confirm (or Play) then plays it;
//   3 the player's own shared maps: upload the map chosen on the play page, delete, move to the
//     top, up, down or to the bottom;
//   4 the slot an upload goes to (after a yes, the map must pass the playability check, run in
//     the background, before it is sent).
// The title follows the state; a waiting line shows while the service, a download or the check
// is at work, and every answer of the service is shown in a notice. Up and Down walk the list,
// Down past its end reaches the buttons, the mouse points and clicks; Escape or the pad's B goes
// back one state, and from the first to the main menu. A player who is not logged in is sent to
// the login page.
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <memory>

class QmSharedMapsPage : public QmMenuPage {
public:
    enum State { Players = 1, PlayerMaps = 2, OwnMaps = 3, UploadSlot = 4 };
    static constexpr int kSlots = 20;

    QmSharedMapsPage();
    ~QmSharedMapsPage() override;
    QmSharedMapsPage(const QmSharedMapsPage&) = delete;
    QmSharedMapsPage& operator=(const QmSharedMapsPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // The list of players who share maps, asked for anew (the page does this itself when it is
    // shown again after another page).
    void Open();
    int GetState() const;
    // Every text the page shows now, with the room its box or button gives it.
    QmTextBoxes TextBoxes() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};
