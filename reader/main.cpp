#include "reader/Limits.h"
#include "reader/Listing.h"
#include "reader/Serve.h"

#include <QString>

#include <csignal>
#include <cstdio>
#include <cstring>

/// Reads Access databases and Excel workbooks for a host that doesn't want their libraries in its own
/// process.
///
///     zephrin-file-reader FILE        prints what is in the file
///     zephrin-file-reader --serve     answers one request of the host
int main(int count, char** arguments) {
    const bool serves = count == 2 && std::strcmp(arguments[1], "--serve") == 0;
    if (count != 2 || (arguments[1][0] == '-' && !serves)) {
        std::fputs(
            "Usage: zephrin-file-reader FILE\nPrints the tables of an Access database or an Excel "
            "workbook.\n",
            stderr);
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN);
    zephrin::reader::GiveUpRights(serves);
    if (serves) return zephrin::reader::Serve();
    zephrin::ado::files::Request request;
    request.Path = QString::fromLocal8Bit(arguments[1]);
    return zephrin::reader::PrintListing(request);
}
