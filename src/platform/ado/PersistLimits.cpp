#include "platform/ado/PersistLimits.h"

#include <algorithm>
#include <string_view>

namespace zephrin::ado {

namespace {

using namespace std::string_view_literals;

// A row with all its values. What is kept in one is far smaller.
constexpr std::size_t MostTagBytes = std::size_t{16} << 20;
// The form itself has four.
constexpr int MostNamespaces = 64;
// The reader compares each attribute of a tag with each: one to four nanoseconds a pair. So much is a matter
// of course for a file of any size, and so much more for each of its bytes.
constexpr qint64 UsualPairs = 400'000'000;
constexpr qint64 PairsPerByte = 40;

/// Goes from tag to tag. Where the text is malformed it may lose its way, but no sooner than the XML reader,
/// which stops there.
class TagScanner {
 public:
    explicit TagScanner(std::string_view text) : xml(text) {}

    QString FindExcess() {
        while ((at = xml.find('<', at)) != xml.npos) {
            if (Skip("<!--"sv, "-->"sv) || Skip("<![CDATA["sv, "]]>"sv) || Skip("<?"sv, "?>"sv)) continue;
            if (xml.substr(at, 2) == "<!"sv) return QStringLiteral("a document type is not allowed here");
            if (!ScanTag()) return QStringLiteral("a row is too long");
            if (namespaces > MostNamespaces) return QStringLiteral("there are too many namespaces");
            if (pairs > UsualPairs + PairsPerByte * static_cast<qint64>(xml.size()))
                return QStringLiteral("there are too many values in a row");
        }
        return {};
    }

    std::size_t At() const { return std::min(at, xml.size()); }

 private:
    bool Skip(std::string_view opening, std::string_view closing) {
        if (xml.substr(at, opening.size()) != opening) return false;
        at = xml.find(closing, at + opening.size());
        if (at != xml.npos) at += closing.size();
        return true;
    }

    /// Takes a tag in; false for one that is too long.
    bool ScanTag() {
        const std::string_view rest = xml.substr(at, MostTagBytes);
        qint64 attributes = 0;
        std::size_t end = 1;
        for (; end < rest.size() && rest[end] != '>'; ++end) {
            if (rest[end] == '=') {
                ++attributes;
            } else if (rest[end] == '"' || rest[end] == '\'') {
                end = rest.find(rest[end], end + 1);
                if (end == rest.npos) break;
            } else if (rest[end] == 'x' && rest.substr(end, 5) == "xmlns"sv) {
                ++namespaces;
            }
        }
        const bool isWhole = end < rest.size();
        pairs += attributes * attributes;
        at += isWhole ? end : rest.size();
        return isWhole || rest.size() < MostTagBytes;
    }

    std::string_view xml;
    std::size_t at = 0;
    int namespaces = 0;
    qint64 pairs = 0;
};

}  // namespace

QString FindExcess(const QByteArray& xml, qint64& line) {
    TagScanner scanner({xml.constData(), static_cast<std::size_t>(xml.size())});
    const QString excess = scanner.FindExcess();
    if (!excess.isEmpty())
        line = 1 + std::count(xml.begin(), xml.begin() + static_cast<qsizetype>(scanner.At()), '\n');
    return excess;
}

}  // namespace zephrin::ado
