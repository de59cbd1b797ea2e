#pragma once

#include <zephrin/ado/Error.h>

namespace zephrin::ado::test {

/// Number of the error that `operation` throws, 0 when it goes well.
template <class Operation>
int NumberOf(Operation operation) {
    try {
        operation();
    } catch (const Error& error) {
        return error.Number();
    }
    return 0;
}

/// Description of the error that `operation` throws, empty when it goes well.
template <class Operation>
QString DescriptionOf(Operation operation) {
    try {
        operation();
    } catch (const Error& error) {
        return error.Description();
    }
    return {};
}

}  // namespace zephrin::ado::test
