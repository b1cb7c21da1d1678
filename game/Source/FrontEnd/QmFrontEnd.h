#pragma once
// What the player sees outside a race and the editor: the intro page, the menu pages with their
// frame, and the one notice dialog every page shares. The coordinator owns one, made after the
// world exists (the menu pages read the tours) and released before it.
#include <memory>

class QmIntroPage;
class QmMenuPages;
class QmNoticeDialog;

class QmFrontEnd {
public:
    QmFrontEnd();
    ~QmFrontEnd();
    QmFrontEnd(const QmFrontEnd&) = delete;
    QmFrontEnd& operator=(const QmFrontEnd&) = delete;

    QmIntroPage& Intro();
    QmMenuPages& MenuPages();
    QmNoticeDialog& Dialog();

private:
    std::unique_ptr<QmNoticeDialog> dialog;
    std::unique_ptr<QmIntroPage> intro;
    std::unique_ptr<QmMenuPages> menuPages;
};
