#include "Network/QmMapDownloads.h"

#include "Network/QmNetworkManager.h"

void QmMapDownloads::Start(std::vector<Item> batch) {
    holder.Stop();
    items = std::move(batch);
    holder.Start([this](const std::atomic<bool>& cancel) {
        for (Item& item : items) {
            if (cancel.load()) {
                break;
            }
            item.arrived = QmNetworkManager::Download(item.url, item.path, item.maxBytes, &cancel);
        }
    });
}

bool QmMapDownloads::Poll(std::vector<Item>& batch) {
    if (!holder.Take()) {
        return false;
    }
    batch = std::move(items);
    return true;
}
