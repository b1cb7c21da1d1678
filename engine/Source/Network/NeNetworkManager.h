#pragma once
// The base of the game's network managers: started once, updated once a frame on the main
// thread, shut down at exit. The base versions do nothing.
class NeNetworkManager {
public:
    NeNetworkManager() = default;
    virtual ~NeNetworkManager() = default;
    NeNetworkManager(const NeNetworkManager&) = delete;
    NeNetworkManager& operator=(const NeNetworkManager&) = delete;

    virtual bool Start() { return true; }
    virtual void Shutdown() {}
    virtual void Update() {}
    virtual bool IsServer() const { return false; }
};
