#include "Platform/VeUrlTransfer.h"

#include <curl/curl.h>

#include <cstdio>
#include <memory>

namespace {
thread_local std::string lastDetail;

struct Sink {
    std::string* memory = nullptr;
    std::FILE* file = nullptr;
    int64_t written = 0;
    int64_t limit = 0;
    bool overflow = false;
    bool writeFailed = false;
    const std::atomic<bool>* cancel = nullptr;
};

size_t Write(char* data, size_t size, size_t count, void* target) {
    Sink& sink = *static_cast<Sink*>(target);
    const size_t bytes = size * count;
    if (sink.written + static_cast<int64_t>(bytes) > sink.limit) {
        sink.overflow = true;
        return 0; // a short count ends the transfer
    }
    sink.written += static_cast<int64_t>(bytes);
    if (sink.memory != nullptr) {
        sink.memory->append(data, bytes);
    } else if (std::fwrite(data, 1, bytes, sink.file) != bytes) {
        sink.writeFailed = true;
        return 0;
    }
    return bytes;
}

int Progress(void* target, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    const Sink& sink = *static_cast<const Sink*>(target);
    return sink.cancel != nullptr && sink.cancel->load() ? 1 : 0; // non-zero ends the transfer
}

bool GlobalInit() {
    static const bool initialised = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return initialised;
}

VeUrlTransfer::Result Classify(CURLcode code, const Sink& sink) {
    using Result = VeUrlTransfer::Result;
    switch (code) {
    case CURLE_OK:
        return Result::Ok;
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
        return Result::BadAddress;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
        return Result::Unreachable;
    case CURLE_OPERATION_TIMEDOUT:
        return Result::TimedOut;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
        return Result::Certificate;
    case CURLE_HTTP_RETURNED_ERROR:
        return Result::HttpError;
    case CURLE_ABORTED_BY_CALLBACK:
        return Result::Cancelled;
    case CURLE_OUT_OF_MEMORY:
        return Result::LocalError;
    case CURLE_WRITE_ERROR:
        return sink.overflow ? Result::TooLong : sink.writeFailed ? Result::LocalError : Result::Failed;
    default:
        return Result::Failed;
    }
}

struct CurlHandle {
    void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
};
struct HeaderList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

VeUrlTransfer::Result Perform(const std::string& url, const std::string* postBody,
                              const std::vector<std::string>& headers, Sink& sink,
                              const VeUrlTransfer::Options& options) {
    lastDetail.clear();
    std::unique_ptr<CURL, CurlHandle> curl(GlobalInit() ? curl_easy_init() : nullptr);
    if (!curl) {
        lastDetail = "the transfer library could not start";
        return VeUrlTransfer::Result::LocalError;
    }
    curl_slist* rawHeaders = nullptr;
    for (const std::string& header : headers) {
        curl_slist* grown = curl_slist_append(rawHeaders, header.c_str());
        if (grown == nullptr) {
            curl_slist_free_all(rawHeaders);
            return VeUrlTransfer::Result::LocalError;
        }
        rawHeaders = grown;
    }
    const std::unique_ptr<curl_slist, HeaderList> headerList(rawHeaders);
    char error[CURL_ERROR_SIZE] = {};
    CURL* handle = curl.get();
    curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, error);
    curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, Write);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &sink);
    curl_easy_setopt(handle, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options.connectTimeoutMs));
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(options.totalTimeoutMs));
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, Progress);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, &sink);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
    // Certificates are always checked; the extra bundle adds to the system's directory of
    // authorities, it does not replace the checks.
    curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, 2L);
    if (!options.caFile.empty()) {
        curl_easy_setopt(handle, CURLOPT_CAINFO, options.caFile.c_str());
    }
    if (postBody != nullptr) {
        curl_easy_setopt(handle, CURLOPT_POSTFIELDS, postBody->data());
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(postBody->size()));
    }
    if (headerList) {
        curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headerList.get());
    }
    const CURLcode code = curl_easy_perform(handle);
    const VeUrlTransfer::Result result = Classify(code, sink);
    if (result != VeUrlTransfer::Result::Ok) {
        lastDetail = error[0] != '\0' ? error : curl_easy_strerror(code);
    }
    return result;
}
} // namespace

VeUrlTransfer::Result VeUrlTransfer::Get(const std::string& url, std::string& body, const Options& options) {
    body.clear();
    Sink sink;
    sink.memory = &body;
    sink.limit = options.maxBytes;
    sink.cancel = options.cancel;
    return Perform(url, nullptr, {}, sink, options);
}

VeUrlTransfer::Result VeUrlTransfer::GetFile(const std::string& url, const std::string& path,
                                             const Options& options) {
    const std::string partial = path + ".part";
    std::FILE* file = std::fopen(partial.c_str(), "wb");
    if (file == nullptr) {
        lastDetail = "cannot write " + partial;
        return Result::LocalError;
    }
    Sink sink;
    sink.file = file;
    sink.limit = options.maxBytes;
    sink.cancel = options.cancel;
    Result result = Perform(url, nullptr, {}, sink, options);
    const bool closed = std::fclose(file) == 0;
    if (result == Result::Ok && (!closed || std::rename(partial.c_str(), path.c_str()) != 0)) {
        lastDetail = "cannot write " + path;
        result = Result::LocalError;
    }
    if (result != Result::Ok) {
        std::remove(partial.c_str());
    }
    return result;
}

VeUrlTransfer::Result VeUrlTransfer::Post(const std::string& url, const std::string& body,
                                          const std::vector<std::string>& headers, std::string& answer,
                                          const Options& options) {
    answer.clear();
    Sink sink;
    sink.memory = &answer;
    sink.limit = options.maxBytes;
    sink.cancel = options.cancel;
    // No "Expect: 100-continue" round trip before the body.
    std::vector<std::string> all = headers;
    all.push_back("Expect:");
    return Perform(url, &body, all, sink, options);
}

const char* VeUrlTransfer::Describe(Result result) {
    switch (result) {
    case Result::Ok:
        return "done";
    case Result::BadAddress:
        return "the address is invalid";
    case Result::Unreachable:
        return "the host cannot be reached";
    case Result::TimedOut:
        return "no answer in time";
    case Result::Certificate:
        return "the host's certificate was refused";
    case Result::HttpError:
        return "the host answered with an error";
    case Result::TooLong:
        return "the answer is too long";
    case Result::Cancelled:
        return "cancelled";
    case Result::LocalError:
        return "out of memory or the file cannot be written";
    case Result::Failed:
        break;
    }
    return "the transfer failed";
}

const std::string& VeUrlTransfer::LastDetail() {
    return lastDetail;
}
