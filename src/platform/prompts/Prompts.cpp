#include <zephrin/Prompts.h>

namespace zephrin {

Prompts::~Prompts() = default;

}  // namespace zephrin
