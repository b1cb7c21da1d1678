#pragma once
// Every manager of the game derives from VaAppCommander and reaches the one coordinator through
// C(). The coordinator registers itself early in its initialisation; asking for it before then is
// a programming error that ends the process.
class VaCoordinator;

class VaAppCommander {
public:
    virtual ~VaAppCommander() = default;

    static VaCoordinator* C();
    // The coordinator registers itself (and unregisters with null when it is destroyed).
    static void Register(VaCoordinator* coordinator);
    static bool Registered();
};
