#include "Network/ReceiveJob.h"

#include "Network/NeSocket.h"
#include "Platform/VeTime.h"

void ReceiveJob::Run() {
    while (!IsStopRequested()) {
        // The wait inside the receive keeps the loop from spinning and returns to the stop flag.
        if (socket.ReceiveOnce(10) < 0) {
            SleepMs(10);
        }
        SleepMs(1);
    }
}
