#include "platform/ado/providers/sqlite/functions/Functions.h"

namespace zephrin::ado::providers::sqlite {

namespace {

unsigned char FoldedByte(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
}

int WithoutEndBlanks(const char* text, int bytes) {
    while (bytes > 0 && text[bytes - 1] == ' ') --bytes;
    return bytes;
}

}  // namespace

int CompareTexts(const char* left, int leftBytes, const char* right, int rightBytes) {
    leftBytes = WithoutEndBlanks(left, leftBytes);
    rightBytes = WithoutEndBlanks(right, rightBytes);
    const int common = leftBytes < rightBytes ? leftBytes : rightBytes;
    for (int index = 0; index < common; ++index) {
        const auto one = static_cast<unsigned char>(left[index]);
        const auto other = static_cast<unsigned char>(right[index]);
        // Beyond ASCII the letters are folded whole.
        if ((one | other) & 0x80)
            return QString::fromUtf8(left, leftBytes)
                .compare(QString::fromUtf8(right, rightBytes), Qt::CaseInsensitive);
        const int difference = int(FoldedByte(one)) - int(FoldedByte(other));
        if (difference != 0) return difference;
    }
    return leftBytes - rightBytes;
}

}  // namespace zephrin::ado::providers::sqlite
