#include "Gameplay/QmRecordedControls.h"

QmRecordedControls::QmRecordedControls(const QmRecording& recorded, std::function<int64_t()> clock)
    : inputs(recorded), time(std::move(clock)) {
    cursor = inputs.Events().begin();
}

void QmRecordedControls::CatchUp() {
    const int64_t now = time();
    for (; cursor != inputs.Events().end() && cursor->first <= now; ++cursor) {
        switch (cursor->second) {
        case QmRecording::JumpPressed:
        case QmRecording::JumpReleased:
            jump = cursor->second == QmRecording::JumpPressed;
            break;
        case QmRecording::LeftPressed:
        case QmRecording::LeftReleased:
            left = cursor->second == QmRecording::LeftPressed;
            break;
        case QmRecording::RightPressed:
        case QmRecording::RightReleased:
            right = cursor->second == QmRecording::RightPressed;
            break;
        default:
            break;
        }
    }
}

bool QmRecordedControls::Jump() {
    CatchUp();
    return jump;
}

bool QmRecordedControls::Left() {
    CatchUp();
    return left;
}

bool QmRecordedControls::Right() {
    CatchUp();
    return right;
}
