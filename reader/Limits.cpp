#include "reader/Limits.h"

#include <csignal>
#include <cstdlib>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace zephrin::reader {

namespace {

constexpr rlim_t Megabyte = 1 << 20;

/// A host with larger files than these bounds allow can move them.
rlim_t FromEnvironment(const char* name, rlim_t otherwise) {
    const char* const text = std::getenv(name);
    const long value = text ? std::strtol(text, nullptr, 10) : 0;
    return value > 0 ? rlim_t(value) : otherwise;
}

void Limit(int what, rlim_t most) {
    rlimit now{};
    if (getrlimit(__rlimit_resource(what), &now) != 0) return;
    const rlim_t hard = now.rlim_max == RLIM_INFINITY || now.rlim_max > most ? most : now.rlim_max;
    const rlimit limit{hard, hard};
    setrlimit(__rlimit_resource(what), &limit);
}

}  // namespace

void GiveUpRights(bool serves) {
    if (serves) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        // The parent may have ended before that was said.
        if (getppid() == 1) _exit(1);
    }
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_DUMPABLE, 0);
#ifndef ZEPHRIN_SANITIZED
    // A sanitizer reserves more of the address space than any limit would leave.
    Limit(RLIMIT_AS, FromEnvironment("ZEPHRIN_READER_MEGABYTES", 1024) * Megabyte);
#endif
    Limit(RLIMIT_CPU, FromEnvironment("ZEPHRIN_READER_SECONDS", 600));
    Limit(RLIMIT_NOFILE, 32);
    // Standard output is a pipe then, which this doesn't concern.
    if (serves) Limit(RLIMIT_FSIZE, 0);
    Limit(RLIMIT_CORE, 0);
}

}  // namespace zephrin::reader
