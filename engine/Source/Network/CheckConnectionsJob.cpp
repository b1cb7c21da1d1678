#include "Network/CheckConnectionsJob.h"

#include "Network/NePacketManager.h"
#include "Platform/VeTime.h"

void CheckConnectionsJob::Run() {
    while (!IsStopRequested()) {
        manager.CheckConnections();
        SleepMs(10);
    }
}
