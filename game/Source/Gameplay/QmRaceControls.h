#pragma once
// The player's side of a race: the three race actions read every frame, the few menu keys the
// race reacts to, and the pad's rumble. The game reads them from its controls; the simulator and
// tests drive them from recorded inputs. The base class reads nothing.
class QmRaceControls {
public:
    virtual ~QmRaceControls() = default;

    // Once per frame before the race reads anything.
    virtual void BeginFrame() {}
    // Race actions: Jump counts a fresh press (and key repeats), Left and Right count while held.
    virtual bool Jump() { return false; }
    virtual bool Left() { return false; }
    virtual bool Right() { return false; }
    // Confirm, Space or a left click this frame (starts a waiting race, asks for a retry).
    virtual bool ConfirmOrClick() { return false; }
    // Escape or the pad's B this frame (opens the in-race menu).
    virtual bool MenuRequested() { return false; }
    virtual void StartRumble() {}
    virtual void StopRumble() {}
    // At the finish: forget this frame's presses and block key repeats, so keys held at the
    // finish do not repeat into the next page.
    virtual void EndRaceInput() {}
};
