#include "reader/Source.h"
#include "reader/access/AccessSource.h"

#include <QFile>

namespace zephrin::reader {

using ado::files::FailureKind;
using ado::files::FileKind;

std::unique_ptr<Source> OpenSource(const ado::files::Request& request) {
    return std::make_unique<access::AccessSource>(request.Path, request.Password);
}

}  // namespace zephrin::reader
