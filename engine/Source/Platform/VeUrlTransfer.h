#pragma once
// One blocking transfer to an http:// or https:// address: a GET into memory or into a file, or a
// POST of a body with its headers into memory. Meant for worker threads: it waits at most the
// time-outs it is given, and a cancel flag (checked while the transfer runs) ends it early.
// An answer longer than its bound is given up, never cut short silently. https always checks
// the peer's certificate and name against the system's authorities, plus those of an optional
// extra bundle file. A file is written beside its place and renamed there only when complete.
// No other file of the engine or the game talks to the transfer library, which is loaded on the
// first transfer; without it every transfer fails with LocalError and says so in the log.
#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

class VeUrlTransfer {
public:
    enum class Result {
        Ok,
        BadAddress,  // malformed, or neither http:// nor https://
        Unreachable, // no name, no route, or the connection was refused
        TimedOut,
        Certificate, // the peer's certificate or TLS handshake was refused
        HttpError,   // the peer answered with a status of 400 or above
        TooLong,     // the answer exceeded its bound
        Cancelled,
        LocalError, // out of memory, or the file could not be written
        Failed,     // anything else (connection dropped mid-answer, ...)
    };

    struct Options {
        int64_t connectTimeoutMs = 5000;
        int64_t totalTimeoutMs = 30000; // 0: no limit beyond the connect time-out
        int64_t maxBytes = 1 << 20;
        std::string caFile; // an extra bundle of trusted authorities (PEM); empty: the system's only
        const std::atomic<bool>* cancel = nullptr;
    };

    // Fetches the address into body (cleared first).
    static Result Get(const std::string& url, std::string& body, const Options& options);
    // Fetches the address into the file at path; nothing is left behind on failure.
    static Result GetFile(const std::string& url, const std::string& path, const Options& options);
    // Sends body with the given header lines ("Name: value") and reads the answer into answer.
    static Result Post(const std::string& url, const std::string& body,
                       const std::vector<std::string>& headers, std::string& answer, const Options& options);

    // A short English description for the log.
    static const char* Describe(Result result);
    // The transfer library's own words about the last failure on this thread (empty if none).
    static const std::string& LastDetail();
};
