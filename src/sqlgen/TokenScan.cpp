#include "sqlgen/TokenScan.h"

#include <algorithm>
#include <vector>

namespace zephrin {

namespace {

/// False where the token at `at` (from 0) belongs to a longer operator.
bool IsReal(const QString& cell, qsizetype at, const QString& token) {
    const QChar before = at > 0 ? cell[at - 1] : QChar();
    const QChar after = at + token.size() < cell.size() ? cell[at + token.size()] : QChar();
    if (token == QLatin1String(">")) return before != u'<' && after != u'=';
    if (token == QLatin1String("<")) return after != u'=' && after != u'>';
    if (token == QLatin1String("=")) return before != u'>' && before != u'<';
    // The T of NOT stands two places in front.
    if (token == QLatin1String("LIKE")) return at < 2 || cell[at - 2] != u'T';
    return true;
}

}  // namespace

void AppendNamed(QString& text, const QString& cell, const QString& name, const QStringList& tokens) {
    std::vector<qsizetype> places;
    for (const QString& token : tokens) {
        for (qsizetype at = cell.indexOf(token); at >= 0; at = cell.indexOf(token, at + token.size())) {
            if (!IsReal(cell, at, token)) break;
            places.push_back(at);
        }
    }
    std::sort(places.begin(), places.end());
    qsizetype copied = 0;
    for (const qsizetype place : places) {
        text.append(QStringView(cell).mid(copied, place - copied));
        text.append(name);
        text.append(u' ');
        copied = place;
    }
    text.append(QStringView(cell).mid(copied));
}

}  // namespace zephrin
