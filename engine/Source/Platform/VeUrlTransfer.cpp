#include "Platform/VeUrlTransfer.h"

#include "Platform/VeLog.h"

#include <curl/curl.h>
#include <dlfcn.h>

#include <cstdio>
#include <memory>

namespace {
thread_local std::string lastDetail;

// The transfer library is loaded on the first transfer rather than linked: it brings a few dozen
// libraries of its own, which would otherwise all be loaded before the game's first frame. Only
// the types and constants of its header are used here; every call goes through this table.
struct CurlLibrary {
    CURLcode (*globalInit)(long) = nullptr;
    CURL* (*easyInit)() = nullptr;
    void (*easyCleanup)(CURL*) = nullptr;
    CURLcode (*easySetopt)(CURL*, CURLoption, ...) = nullptr;
    CURLcode (*easyPerform)(CURL*) = nullptr;
    const char* (*easyStrerror)(CURLcode) = nullptr;
    curl_slist* (*slistAppend)(curl_slist*, const char*) = nullptr;
    void (*slistFreeAll)(curl_slist*) = nullptr;
    bool ready = false;
};

template <typename Function> bool Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

CurlLibrary LoadCurl() {
    CurlLibrary curl;
    void* library = dlopen("libcurl.so.4", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        library = dlopen("libcurl.so", RTLD_NOW | RTLD_LOCAL);
    }
    if (library == nullptr) {
        const char* why = dlerror();
        Log("Transfers are unavailable: libcurl cannot be loaded (%s)\n", why != nullptr ? why : "not found");
        return curl;
    }
    if (!Find(library, "curl_global_init", curl.globalInit) ||
        !Find(library, "curl_easy_init", curl.easyInit) ||
        !Find(library, "curl_easy_cleanup", curl.easyCleanup) ||
        !Find(library, "curl_easy_setopt", curl.easySetopt) ||
        !Find(library, "curl_easy_perform", curl.easyPerform) ||
        !Find(library, "curl_easy_strerror", curl.easyStrerror) ||
        !Find(library, "curl_slist_append", curl.slistAppend) ||
        !Find(library, "curl_slist_free_all", curl.slistFreeAll)) {
        Log("Transfers are unavailable: the libcurl found lacks an entry point the game needs\n");
        return curl; // the library stays loaded: unloading it buys nothing
    }
    curl.ready = curl.globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    if (!curl.ready) {
        Log("Transfers are unavailable: libcurl failed to initialise\n");
    }
    return curl;
}

// Loaded and initialised once, by the first transfer on any thread.
const CurlLibrary& Curl() {
    static const CurlLibrary curl = LoadCurl();
    return curl;
}

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
    void operator()(CURL* curl) const { Curl().easyCleanup(curl); }
};
struct HeaderList {
    void operator()(curl_slist* list) const { Curl().slistFreeAll(list); }
};

VeUrlTransfer::Result Perform(const std::string& url, const std::string* postBody,
                              const std::vector<std::string>& headers, Sink& sink,
                              const VeUrlTransfer::Options& options) {
    lastDetail.clear();
    const CurlLibrary& library = Curl();
    if (!library.ready) {
        lastDetail = "the transfer library (libcurl) is not available";
        return VeUrlTransfer::Result::LocalError;
    }
    std::unique_ptr<CURL, CurlHandle> curl(library.easyInit());
    if (!curl) {
        lastDetail = "the transfer library could not start";
        return VeUrlTransfer::Result::LocalError;
    }
    curl_slist* rawHeaders = nullptr;
    for (const std::string& header : headers) {
        curl_slist* grown = library.slistAppend(rawHeaders, header.c_str());
        if (grown == nullptr) {
            library.slistFreeAll(rawHeaders);
            return VeUrlTransfer::Result::LocalError;
        }
        rawHeaders = grown;
    }
    const std::unique_ptr<curl_slist, HeaderList> headerList(rawHeaders);
    char error[CURL_ERROR_SIZE] = {};
    CURL* handle = curl.get();
    library.easySetopt(handle, CURLOPT_ERRORBUFFER, error);
    library.easySetopt(handle, CURLOPT_URL, url.c_str());
    library.easySetopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    library.easySetopt(handle, CURLOPT_WRITEFUNCTION, Write);
    library.easySetopt(handle, CURLOPT_WRITEDATA, &sink);
    library.easySetopt(handle, CURLOPT_FAILONERROR, 1L);
    library.easySetopt(handle, CURLOPT_NOSIGNAL, 1L);
    library.easySetopt(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options.connectTimeoutMs));
    library.easySetopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(options.totalTimeoutMs));
    library.easySetopt(handle, CURLOPT_XFERINFOFUNCTION, Progress);
    library.easySetopt(handle, CURLOPT_XFERINFODATA, &sink);
    library.easySetopt(handle, CURLOPT_NOPROGRESS, 0L);
    // Certificates are always checked; the extra bundle adds to the system's directory of
    // authorities, it does not replace the checks.
    library.easySetopt(handle, CURLOPT_SSL_VERIFYPEER, 1L);
    library.easySetopt(handle, CURLOPT_SSL_VERIFYHOST, 2L);
    if (!options.caFile.empty()) {
        library.easySetopt(handle, CURLOPT_CAINFO, options.caFile.c_str());
    }
    if (postBody != nullptr) {
        library.easySetopt(handle, CURLOPT_POSTFIELDS, postBody->data());
        library.easySetopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(postBody->size()));
    }
    if (headerList) {
        library.easySetopt(handle, CURLOPT_HTTPHEADER, headerList.get());
    }
    const CURLcode code = library.easyPerform(handle);
    const VeUrlTransfer::Result result = Classify(code, sink);
    if (result != VeUrlTransfer::Result::Ok) {
        lastDetail = error[0] != '\0' ? error : library.easyStrerror(code);
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
