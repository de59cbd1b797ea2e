#include <zephrin/ado/Error.h>

namespace zephrin::ado {

Error::Error(int errorNumber, QString errorDescription, QString errorSource)
    : number(errorNumber),
      description(std::move(errorDescription)),
      source(std::move(errorSource)),
      utf8(description.toUtf8()) {}

Error::~Error() = default;

}  // namespace zephrin::ado
