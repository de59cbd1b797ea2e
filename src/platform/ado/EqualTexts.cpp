#include "platform/ado/EqualTexts.h"

#include "platform/ado/TextCollator.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <array>
#include <memory>
#include <unicode/uset.h>
#include <unordered_map>

namespace zephrin::ado {

namespace {

using Elements = std::unique_ptr<UCollationElements, decltype(&ucol_closeElements)>;
using Set = std::unique_ptr<USet, decltype(&uset_close)>;

/// The weights of the letters of a text, without accents and case.
std::vector<int> WeightsOf(UCollationElements* elements, const QString& text) {
    std::vector<int> weights;
    UErrorCode status = U_ZERO_ERROR;
    ucol_setText(elements, reinterpret_cast<const UChar*>(text.utf16()), int32_t(text.size()), &status);
    for (int32_t element = 0; (element = ucol_next(elements, &status)) != UCOL_NULLORDER;)
        if (const int weight = ucol_primaryOrder(element); weight != 0) weights.push_back(weight);
    return weights;
}

/// What has to be known of all characters to leave out texts: made once, in a few milliseconds.
class Characters {
 public:
    Characters() : elements(OpenTextElements(), ucol_closeElements) {
        ReadContractions();
        UErrorCode status = U_ZERO_ERROR;
        // Unified ideographs and what has no name have a weight of their own that no other character shares.
        const Set named(uset_openPattern(u"[[:assigned:]-[:Unified_Ideograph:]-[:Co:]-[:Cs:]]", -1, &status),
                        uset_close);
        ForEach(named.get(), [this](char32_t character) {
            const QString text = QString::fromUcs4(&character, 1);
            const std::vector<int> weights = WeightsOf(elements.get(), text);
            if (weights.empty())
                always.push_back(character);
            else
                byWeight[weights.front()].push_back(character);
            if (character < 128) plain[character] = weights.size() == 1 ? weights.front() : 0;
        });
        const Set marks(uset_openPattern(u"[:^ccc=0:]", -1, &status), uset_close);
        ForEach(marks.get(), [this](char32_t character) { tails.push_back(character); });
        always.insert(always.end(), tails.begin(), tails.end());
        for (std::vector<char32_t>* const characters : {&always, &tails, &starters}) Sort(*characters);
        for (auto& [weight, characters] : byWeight) Sort(characters);
    }

    /// The weight of a character of ASCII, 0 for one that has none.
    int PlainWeight(char character) const { return plain[static_cast<unsigned char>(character)]; }
    /// Whether it may change what stands in front of it.
    bool IsTail(char32_t character) const {
        return std::binary_search(tails.begin(), tails.end(), character);
    }
    /// Whether what stands behind it may change it.
    bool IsStarter(char32_t character) const {
        return std::binary_search(starters.begin(), starters.end(), character);
    }
    std::optional<char32_t> TailBehind(char32_t character) const { return Behind(tails, character); }
    /// The next character that has no weight, or one that depends on others: it may stand anywhere.
    std::optional<char32_t> AlwaysBehind(char32_t character) const { return Behind(always, character); }
    std::optional<char32_t> OfWeightBehind(int weight, char32_t character) const {
        const auto found = byWeight.find(weight);
        return found == byWeight.end() ? std::nullopt : Behind(found->second, character);
    }

 private:
    template <class Work>
    static void ForEach(const USet* set, Work work) {
        for (int32_t item = 0; item < uset_getItemCount(set); ++item) {
            UChar32 first = 0;
            UChar32 last = 0;
            UErrorCode status = U_ZERO_ERROR;
            if (uset_getItem(set, item, &first, &last, nullptr, 0, &status) != 0) continue;
            for (UChar32 character = first; character <= last; ++character) work(char32_t(character));
        }
    }

    /// Rows of characters that weigh otherwise than each alone.
    void ReadContractions() {
        UErrorCode status = U_ZERO_ERROR;
        const Set contractions(uset_openEmpty(), uset_close);
        ucol_getContractionsAndExpansions(TextCollator(), contractions.get(), nullptr, true, &status);
        for (int32_t item = 0; item < uset_getItemCount(contractions.get()); ++item) {
            UChar32 first = 0;
            UChar32 last = 0;
            std::array<char16_t, 64> text{};
            const int32_t length = uset_getItem(contractions.get(), item, &first, &last, text.data(),
                                                int32_t(text.size()), &status);
            // U+FDD0 and the next mark the beginnings of indexes; no text holds them.
            if (length < 2 || text.front() == 0xFDD0 || text.front() == 0xFDD1) continue;
            const QList<uint> characters = QStringView(text.data(), length).toUcs4();
            tails.insert(tails.end(), characters.begin() + 1, characters.end());
            starters.push_back(characters.front());
            const std::vector<int> weights =
                WeightsOf(elements.get(), QStringView(text.data(), length).toString());
            if (!weights.empty()) byWeight[weights.front()].push_back(characters.front());
        }
    }

    static void Sort(std::vector<char32_t>& characters) {
        std::sort(characters.begin(), characters.end());
        characters.erase(std::unique(characters.begin(), characters.end()), characters.end());
    }

    static std::optional<char32_t> Behind(const std::vector<char32_t>& characters, char32_t character) {
        const auto found = std::upper_bound(characters.begin(), characters.end(), character);
        return found == characters.end() ? std::nullopt : std::optional(*found);
    }

    Elements elements;
    std::unordered_map<int, std::vector<char32_t>> byWeight;
    std::vector<char32_t> always;
    std::vector<char32_t> tails;
    std::vector<char32_t> starters;
    std::array<int, 128> plain{};
};

const Characters& Known() {
    static const Characters characters;
    return characters;
}

/// Reads one character of valid UTF-8 and moves behind it; nothing where it isn't valid.
std::optional<char32_t> Decode(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) return text[at++];
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return std::nullopt;
    const QString one = QString::fromUtf8(text.data() + at, qsizetype(length));
    const QList<uint> characters = one.toUcs4();
    if (characters.size() != 1 || characters.front() == QChar::ReplacementCharacter) return std::nullopt;
    at += length;
    return characters.front();
}

std::string Joined(std::string_view begin, char32_t character) {
    return std::string(begin) + QString::fromUcs4(&character, 1).toStdString();
}

}  // namespace

EqualTexts::EqualTexts(std::string_view wanted) {
    while (!wanted.empty() && wanted.back() == ' ') wanted.remove_suffix(1);
    const Elements elements(OpenTextElements(), ucol_closeElements);
    const QString text = QString::fromUtf8(wanted.data(), qsizetype(wanted.size()));
    weights = WeightsOf(elements.get(), text);
    // A text that is not valid means a character that many others mean, too.
    searchable = !text.contains(QChar(QChar::ReplacementCharacter));
    const QList<uint> characters = text.toUcs4();
    for (const char32_t character : characters) {
        const QString one = QString::fromUcs4(&character, 1);
        const std::vector<int> begins = WeightsOf(elements.get(), one);
        if (!begins.empty()) own.emplace_back(begins.front(), character);
    }
}

/// Behind the wanted text, blanks may follow.
int EqualTexts::Expected(std::size_t index) const {
    return index < weights.size() ? weights[index] : Known().PlainWeight(' ');
}

std::optional<char32_t> EqualTexts::NextAllowed(char32_t behind, std::size_t weightsBefore) const {
    const int weight = Expected(weightsBefore);
    std::optional<char32_t> next = Known().AlwaysBehind(behind);
    const auto consider = [&](std::optional<char32_t> other) {
        if (other && (!next || *other < *next)) next = other;
    };
    consider(Known().OfWeightBehind(weight, behind));
    for (const auto& [begins, character] : own)
        if (begins == weight && character > behind) consider(character);
    return next;
}

std::optional<std::string> EqualTexts::Behind(std::string_view text) const {
    const Characters& known = Known();
    const std::string following = std::string(text) + '\0';
    // Where each character begins, and how many weights stand in front of it.
    std::vector<std::size_t> places;
    std::vector<std::size_t> counts;
    std::size_t count = 0;
    std::optional<Elements> elements;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const std::optional<char32_t> first = Decode(text, at);
        if (!first) return following;
        const std::size_t behindFirst = at;
        std::optional<char32_t> next;
        while (at < text.size()) {
            std::size_t end = at;
            next = Decode(text, end);
            if (!next) return following;
            if (!known.IsTail(*next)) break;
            at = end;
            next.reset();
        }
        places.push_back(begin);
        counts.push_back(count);
        std::vector<int> weighs;
        if (at == begin + 1 && known.PlainWeight(text[begin]) != 0) {
            weighs.push_back(known.PlainWeight(text[begin]));
        } else {
            if (!elements) elements.emplace(OpenTextElements(), ucol_closeElements);
            const QString cluster = QString::fromUtf8(text.data() + begin, qsizetype(at - begin));
            weighs = WeightsOf(elements->get(), cluster);
        }
        const auto fits = [&](std::size_t index) { return weighs[index] == Expected(count + index); };
        std::size_t index = 0;
        while (index < weighs.size() && fits(index)) ++index;
        if (index < weighs.size()) {
            // What follows may still change the character, if it is one of those that can be changed or the
            // weight is not its own.
            const auto isOwn = [&] {
                if (at == behindFirst) return true;
                const QString alone = QString::fromUtf8(text.data() + begin, qsizetype(behindFirst - begin));
                return index < WeightsOf(elements->get(), alone).size();
            };
            if (known.IsStarter(*first) || !isOwn()) {
                const std::optional<char32_t> tail = known.TailBehind(next.value_or(0));
                return tail ? Joined(text.substr(0, at), *tail) : following;
            }
            return Stepped(text, places, counts);
        }
        for (std::size_t place = behindFirst; place < at; Decode(text, place)) {
            const QString shorter = QString::fromUtf8(text.data() + begin, qsizetype(place - begin));
            places.push_back(place);
            counts.push_back(count + WeightsOf(elements->get(), shorter).size());
        }
        count += weighs.size();
    }
    return following;
}

/// Goes back to the last place at which a greater character may stand.
std::optional<std::string> EqualTexts::Stepped(std::string_view text, const std::vector<std::size_t>& places,
                                               const std::vector<std::size_t>& counts) const {
    for (std::size_t index = places.size(); index-- > 0;) {
        std::size_t end = places[index];
        const char32_t character = Decode(text, end).value_or(0);
        if (const std::optional<char32_t> next = NextAllowed(character, counts[index]))
            return Joined(text.substr(0, places[index]), *next);
    }
    return std::nullopt;
}

}  // namespace zephrin::ado
