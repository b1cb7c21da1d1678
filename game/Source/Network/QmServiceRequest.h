#pragma once
// One request to the web service over the engine's URL transfers (used for https:// services),
// run on a worker of its own so that no frame waits for the connection, the handshake or the
// answer.
//
// Contract: Start is refused while a request runs. Poll hands over the finished request's result
// and answer body once (a failure is logged with its reason). Stop cancels a running request and
// waits for it; destroying stops.
#include "Platform/VeUrlTransfer.h"
#include "Threads/VtJobHolder.h"

#include <string>

class QmServiceRequest {
public:
    // A GET when contentType is empty, else a POST of body with that content type.
    bool Start(const std::string& url, const std::string& contentType, const std::string& body,
               const VeUrlTransfer::Options& options);
    bool Running() const { return holder.Held(); }
    bool Poll(VeUrlTransfer::Result& result, std::string& answer);
    void Stop() { holder.Stop(); }

private:
    VeUrlTransfer::Result result = VeUrlTransfer::Result::Failed;
    std::string answer;
    VtJobHolder holder; // last: stops before what the request writes goes
};
