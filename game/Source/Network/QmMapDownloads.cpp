#include "Network/QmMapDownloads.h"

#include "Network/QmNetworkManager.h"
#include "Threads/VtJob.h"
#include "Threads/VtWorkerPool.h"

class QmMapDownloads::Job : public VtJob {
public:
    void Run() override {
        for (Item& item : items) {
            if (cancel.load()) {
                break;
            }
            item.arrived = QmNetworkManager::Download(item.url, item.path, item.maxBytes, &cancel);
        }
    }

    std::vector<Item> items;
    std::atomic<bool> cancel{false};
};

QmMapDownloads::QmMapDownloads() : job(std::make_unique<Job>()) {}

QmMapDownloads::~QmMapDownloads() {
    Stop();
}

void QmMapDownloads::Start(std::vector<Item> items) {
    Stop();
    if (!pool) {
        pool = std::make_unique<VtWorkerPool>(1);
    }
    job->items = std::move(items);
    job->cancel.store(false);
    queued = true;
    pool->AddJob(job.get());
}

bool QmMapDownloads::Running() const {
    return queued;
}

bool QmMapDownloads::Poll(std::vector<Item>& items) {
    if (!queued || job->GetState() != VtJob::Done) {
        return false;
    }
    job->Wait();
    queued = false;
    items = std::move(job->items);
    return true;
}

void QmMapDownloads::Stop() {
    if (!queued) {
        return;
    }
    job->cancel.store(true);
    job->Wait();
    queued = false;
}
