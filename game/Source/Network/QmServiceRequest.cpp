#include "Network/QmServiceRequest.h"

#include "Platform/VeLog.h"

bool QmServiceRequest::Start(const std::string& url, const std::string& contentType, const std::string& body,
                             const VeUrlTransfer::Options& options) {
    if (holder.Held()) {
        return false;
    }
    answer.clear();
    return holder.Start([this, url, contentType, body, options](const std::atomic<bool>& cancel) {
        VeUrlTransfer::Options cancellable = options;
        cancellable.cancel = &cancel;
        if (contentType.empty()) {
            result = VeUrlTransfer::Get(url, answer, cancellable);
        } else {
            result = VeUrlTransfer::Post(url, body, {"Content-Type: " + contentType}, answer, cancellable);
        }
        if (result != VeUrlTransfer::Result::Ok && result != VeUrlTransfer::Result::Cancelled) {
            Log("The service at %s: %s (%s).\n", url.c_str(), VeUrlTransfer::Describe(result),
                VeUrlTransfer::LastDetail().c_str());
        }
    });
}

bool QmServiceRequest::Poll(VeUrlTransfer::Result& finished, std::string& body) {
    if (!holder.Take()) {
        return false;
    }
    finished = result;
    body = std::move(answer);
    return true;
}
