#pragma once
// The management page (page 3): the tours and the maps of the selected tour in two columns, with
// commands to make, rename, delete and reorder tours, to make, delete and reorder maps, and to
// switch a tour's Lock and Editable marks. Every change goes through the world's tour rules; a
// refused move shows the rule's notice, and a tour is deleted only after the player confirmed it.
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <memory>

class QmManagementPage : public QmMenuPage {
public:
    QmManagementPage();
    ~QmManagementPage() override;
    QmManagementPage(const QmManagementPage&) = delete;
    QmManagementPage& operator=(const QmManagementPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // Every text the page shows now, with the room its box or button gives it.
    QmTextBoxes TextBoxes() const;
    // Reads the tours and maps again, keeping the selection where it still exists.
    void RebuildLists();

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};
