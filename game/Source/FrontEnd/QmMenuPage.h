#pragma once
// A menu page the front end's frame runs while it is the current page: Frame reads the page's
// input and draws it onto the screen's overlay once per frame, Relabel shows the current language
// again after it changed.
#include "Coordinator/VaAppCommander.h"

class QmMenuPage : public VaAppCommander {
public:
    ~QmMenuPage() override = default;
    // This frame's input and drawing on the screen's overlay.
    virtual void Frame() = 0;
    // The language changed: make every text again.
    virtual void Relabel() {}
};
