#include "Network/QmUpdateDownload.h"

#include "Network/QmNetworkManager.h"
#include "Network/QmSha256.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"

#include <chrono>

namespace {
// "http://host:port/anything" without what follows the host and port.
std::string BaseOf(const std::string& url) {
    const size_t scheme = url.find("://");
    const size_t path = url.find('/', scheme == std::string::npos ? 0 : scheme + 3);
    return path == std::string::npos ? url : url.substr(0, path);
}
} // namespace

QmUpdateDownload::~QmUpdateDownload() {
    if (job.valid()) {
        cancel = true;
        job.wait();
    }
}

std::string QmUpdateDownload::PackagePath() {
    return GetGameFolder() + "/quillmaze-update.tar.gz";
}

bool QmUpdateDownload::Start(const std::string& serviceUrl) {
    if (Running()) {
        return false;
    }
    CreateFolder(GetGameFolder());
    job =
        std::async(std::launch::async, &QmUpdateDownload::Fetch, BaseOf(serviceUrl), PackagePath(), &cancel);
    return true;
}

bool QmUpdateDownload::Running() const {
    return job.valid() && job.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
}

bool QmUpdateDownload::TakeResult(std::string& path, int32_t& failureLine) {
    if (!job.valid() || Running()) {
        return false;
    }
    const Outcome outcome = job.get();
    path = outcome.path;
    failureLine = outcome.failureLine;
    return true;
}

QmUpdateDownload::Outcome QmUpdateDownload::Fetch(const std::string& baseUrl, const std::string& path,
                                                  const std::atomic<bool>* cancel) {
    std::string digest;
    if (!QmNetworkManager::Fetch(baseUrl + "/files/quillmaze-update.sha256", digest, 4096) ||
        !QmNetworkManager::Download(baseUrl + "/files/quillmaze-update.tar.gz", path, 512LL << 20, cancel)) {
        return {"", kUnreachableLine};
    }
    digest = digest.substr(0, digest.find_first_of(" \t\r\n"));
    std::string bytes;
    if (!ReadFileBytes(path, bytes) || QmSha256::Hex(bytes) != digest) {
        Log("The update package does not match its published SHA-256: removed.\n");
        RemoveFile(path);
        return {"", kDamagedLine};
    }
    Log("The update package is at %s. Unpack it into a new folder and start the game from there.\n",
        path.c_str());
    return {path, 0};
}
