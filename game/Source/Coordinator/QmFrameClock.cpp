#include "Coordinator/QmFrameClock.h"

#include "Platform/VeTime.h"

#include <cmath>

QmFrameClock::~QmFrameClock() {
    Uninstall();
}

void QmFrameClock::Install(float frameSeconds) {
    Uninstall();
    microseconds.store(GetTimeMs() * 1000);
    stepMicroseconds = std::llround(static_cast<double>(frameSeconds) * 1e6);
    SetTimeSource([this] { return NowMs(); });
    installed = true;
}

void QmFrameClock::Uninstall() {
    if (installed) {
        SetTimeSource(nullptr);
        installed = false;
    }
}

void QmFrameClock::Advance() {
    if (installed) {
        microseconds.fetch_add(stepMicroseconds);
    }
}
