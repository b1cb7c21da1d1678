#include "Network/QmServiceRequest.h"

#include "Platform/VeLog.h"
#include "Threads/VtJob.h"
#include "Threads/VtWorkerPool.h"

#include <atomic>

class QmServiceRequest::Job : public VtJob {
public:
    void Run() override {
        options.cancel = &cancel;
        if (contentType.empty()) {
            result = VeUrlTransfer::Get(url, answer, options);
        } else {
            result = VeUrlTransfer::Post(url, body, {"Content-Type: " + contentType}, answer, options);
        }
        if (result != VeUrlTransfer::Result::Ok && result != VeUrlTransfer::Result::Cancelled) {
            Log("The service at %s: %s (%s).\n", url.c_str(), VeUrlTransfer::Describe(result),
                VeUrlTransfer::LastDetail().c_str());
        }
    }

    std::string url;
    std::string contentType;
    std::string body;
    VeUrlTransfer::Options options;
    VeUrlTransfer::Result result = VeUrlTransfer::Result::Failed;
    std::string answer;
    std::atomic<bool> cancel{false};
};

QmServiceRequest::QmServiceRequest() : job(std::make_unique<Job>()) {}

QmServiceRequest::~QmServiceRequest() {
    Stop();
}

bool QmServiceRequest::Start(const std::string& url, const std::string& contentType, const std::string& body,
                             const VeUrlTransfer::Options& options) {
    if (queued) {
        return false;
    }
    if (!pool) {
        pool = std::make_unique<VtWorkerPool>(1);
    }
    job->url = url;
    job->contentType = contentType;
    job->body = body;
    job->options = options;
    job->answer.clear();
    job->cancel.store(false);
    queued = true;
    pool->AddJob(job.get());
    return true;
}

bool QmServiceRequest::Running() const {
    return queued;
}

bool QmServiceRequest::Poll(VeUrlTransfer::Result& result, std::string& answer) {
    if (!queued || job->GetState() != VtJob::Done) {
        return false;
    }
    job->Wait();
    queued = false;
    result = job->result;
    answer = std::move(job->answer);
    return true;
}

void QmServiceRequest::Stop() {
    if (!queued) {
        return;
    }
    job->cancel.store(true);
    job->Wait();
    queued = false;
}
