#include "platform/ado/TextOrder.h"

#include "platform/ado/TextCollator.h"

#include <QString>

#include <algorithm>
#include <array>

namespace zephrin::ado {

const UCollator* TextCollator() {
    static const UCollator* const collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        UCollator* const opened = ucol_open("", &status);
        Q_ASSERT_X(U_SUCCESS(status), "TextCollator", "ICU has no data");
        ucol_setStrength(opened, UCOL_SECONDARY);
        return opened;
    }();
    return collator;
}

UCollationElements* OpenTextElements() {
    UErrorCode status = U_ZERO_ERROR;
    return ucol_openElements(TextCollator(), nullptr, 0, &status);
}

namespace {

/// What makes most comparisons cheap: each character of ASCII has one weight, and that of no other character
/// hangs on it but for what stands behind it. So a text of these characters alone is compared by a table.
class PlainRanks {
 public:
    PlainRanks() {
        UCollationElements* const elements = OpenTextElements();
        std::array<int, 128> ofCharacter{};
        for (std::size_t character = 0; character < ofCharacter.size(); ++character) {
            const UChar text = static_cast<UChar>(character);
            UErrorCode status = U_ZERO_ERROR;
            ucol_setText(elements, &text, 1, &status);
            const int32_t element = ucol_next(elements, &status);
            // Control characters have no weight and are left to the library.
            if (element == UCOL_NULLORDER || ucol_primaryOrder(element) == 0) continue;
            ofCharacter[character] = ucol_primaryOrder(element);
            weights.push_back(ofCharacter[character]);
        }
        ucol_closeElements(elements);
        std::sort(weights.begin(), weights.end());
        weights.erase(std::unique(weights.begin(), weights.end()), weights.end());
        for (std::size_t character = 0; character < ofCharacter.size(); ++character)
            if (ofCharacter[character] != 0) ranks[character] = CodeOf(ofCharacter[character]);
    }

    /// 0 for a character that isn't plain.
    unsigned char operator[](char character) const { return ranks[static_cast<unsigned char>(character)]; }

    /// Odd for a weight that a plain character has; between two of them lies an even code for all others.
    unsigned char CodeOf(int weight) const {
        const auto found = std::lower_bound(weights.begin(), weights.end(), weight);
        const bool plain = found != weights.end() && *found == weight;
        return static_cast<unsigned char>(2 * (found - weights.begin()) + (plain ? 3 : 2));
    }

 private:
    std::vector<int> weights;
    std::array<unsigned char, 256> ranks{};
};

const PlainRanks& Plain() {
    static const PlainRanks ranks;
    return ranks;
}

std::string_view WithoutEndBlanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

int CompareInFull(std::string_view left, std::string_view right) {
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(TextCollator(), left.data(), static_cast<int32_t>(left.size()), right.data(),
                            static_cast<int32_t>(right.size()), &status);
}

}  // namespace

int CompareTexts(std::string_view left, std::string_view right) {
    left = WithoutEndBlanks(left);
    right = WithoutEndBlanks(right);
    static const PlainRanks& ranks = Plain();
    const std::size_t common = std::min(left.size(), right.size());
    // A mark behind a character may change its weight.
    const auto stands = [](std::string_view text, std::size_t at) {
        return at >= text.size() || ranks[text[at]] != 0;
    };
    for (std::size_t at = 0; at < common; ++at) {
        const int one = ranks[left[at]];
        const int other = ranks[right[at]];
        if (one == other && one != 0) continue;
        const bool plain = one != 0 && other != 0 && stands(left, at + 1) && stands(right, at + 1);
        return plain ? one - other : CompareInFull(left, right);
    }
    if (!stands(left, common) || !stands(right, common)) return CompareInFull(left, right);
    return left.size() < right.size() ? -1 : left.size() > right.size();
}

TextKeyWriter::~TextKeyWriter() {
    if (elements) ucol_closeElements(elements);
}

void TextKeyWriter::Append(std::string_view text, std::vector<char>& key) {
    static const PlainRanks& ranks = Plain();
    text = WithoutEndBlanks(text);
    const std::size_t begin = key.size();
    key.resize(begin + text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const unsigned char rank = ranks[text[at]];
        if (rank == 0) {
            key.resize(begin);
            return AppendByElements(text, key);
        }
        key[begin + at] = static_cast<char>(rank);
    }
}

/// The weights of the letters, those that no plain character has with their two bytes, then, behind a 0, the
/// accents.
void TextKeyWriter::AppendByElements(std::string_view text, std::vector<char>& key) {
    static const PlainRanks& ranks = Plain();
    constexpr char noAccent = 5;
    if (!elements) elements = OpenTextElements();
    const QString wide = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    ucol_setText(elements, reinterpret_cast<const UChar*>(wide.utf16()), static_cast<int32_t>(wide.size()),
                 &status);
    accents.clear();
    for (int32_t element = 0; (element = ucol_next(elements, &status)) != UCOL_NULLORDER;) {
        if (const int weight = ucol_primaryOrder(element); weight != 0) {
            const unsigned char code = ranks.CodeOf(weight);
            key.push_back(static_cast<char>(code));
            if (code % 2 == 0) {
                key.push_back(static_cast<char>(weight >> 8));
                key.push_back(static_cast<char>(weight & 0xFF));
            }
        }
        if (const int accent = ucol_secondaryOrder(element); accent != 0)
            accents.push_back(static_cast<char>(accent));
    }
    while (!accents.empty() && accents.back() == noAccent) accents.pop_back();
    if (accents.empty()) return;
    key.push_back(0);
    key.insert(key.end(), accents.begin(), accents.end());
}

}  // namespace zephrin::ado
