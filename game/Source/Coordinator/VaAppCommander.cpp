#include "Coordinator/VaAppCommander.h"

#include "Platform/VeLog.h"

#include <cstdlib>

namespace {
VaCoordinator* registeredCoordinator = nullptr;
}

VaCoordinator* VaAppCommander::C() {
    if (registeredCoordinator == nullptr) {
        Log("Error: Appcommander Coordinator not initialized! Use VaAppCommander::C() to initialize.\n");
        std::abort();
    }
    return registeredCoordinator;
}

void VaAppCommander::Register(VaCoordinator* coordinator) {
    registeredCoordinator = coordinator;
}

bool VaAppCommander::Registered() {
    return registeredCoordinator != nullptr;
}
