#include "Network/QmUpdateDownload.h"

#include "Network/QmNetworkManager.h"
#include "Network/QmSha256.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"

namespace {
// "http://host:port/anything" without what follows the host and port.
std::string BaseOf(const std::string& url) {
    const size_t scheme = url.find("://");
    const size_t path = url.find('/', scheme == std::string::npos ? 0 : scheme + 3);
    return path == std::string::npos ? url : url.substr(0, path);
}
} // namespace

std::string QmUpdateDownload::PackagePath() {
    return GetGameFolder() + "/quillmaze-update.tar.gz";
}

bool QmUpdateDownload::Start(const std::string& serviceUrl) {
    if (Running()) {
        return false;
    }
    holder.Take(); // an outcome nobody took is dropped
    CreateFolder(GetGameFolder());
    return holder.Start([this, base = BaseOf(serviceUrl), path = PackagePath()](
                            const std::atomic<bool>& cancel) { outcome = Fetch(base, path, &cancel); });
}

bool QmUpdateDownload::TakeResult(std::string& path, int32_t& failureLine) {
    if (!holder.Take()) {
        return false;
    }
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
