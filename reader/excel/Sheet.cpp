#include "reader/excel/Sheet.h"

#include <QRegularExpression>

namespace zephrin::reader::excel {

int ColumnOf(std::string_view letters, std::size_t& length) {
    int column = 0;
    length = 0;
    while (length < letters.size() && length < 4) {
        const char letter = char(letters[length] & ~0x20);
        if (letter < 'A' || letter > 'Z') break;
        column = column * 26 + (letter - 'A' + 1);
        ++length;
    }
    return column == 0 || column > MostColumns ? -1 : column - 1;
}

bool ReadArea(QStringView text, Area& area) {
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("\\$?([A-Za-z]{0,3})\\$?(\\d{0,7})(?::\\$?([A-Za-z]{0,3})\\$?(\\d{0,7}))?")));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) return false;
    const auto column = [&](int group, int none) {
        std::size_t length = 0;
        const QByteArray letters = match.captured(group).toLatin1();
        return letters.isEmpty() ? none
                                 : ColumnOf({letters.constData(), std::size_t(letters.size())}, length);
    };
    const auto row = [&](int group, qint64 none) {
        return match.captured(group).isEmpty() ? none : match.captured(group).toLongLong() - 1;
    };
    const bool isOne = match.captured(3).isEmpty() && match.captured(4).isEmpty();
    if (isOne && (match.captured(1).isEmpty() || match.captured(2).isEmpty())) return false;
    const bool hasColumns = !match.captured(1).isEmpty();
    const bool hasRows = !match.captured(2).isEmpty();
    if (!hasColumns && !hasRows) return false;
    if (!isOne && (match.captured(3).isEmpty() == hasColumns || match.captured(4).isEmpty() == hasRows))
        return false;
    area.FirstColumn = column(1, 0);
    area.FirstRow = row(2, 0);
    area.LastColumn = isOne ? area.FirstColumn : column(3, -1);
    area.LastRow = isOne ? area.FirstRow : row(4, -1);
    if (hasColumns && (area.FirstColumn < 0 || area.LastColumn < 0)) return false;
    if (hasRows && (area.FirstRow < 0 || area.LastRow < 0 || area.LastRow >= MostRows)) return false;
    if (area.LastColumn >= 0 && area.LastColumn < area.FirstColumn)
        std::swap(area.FirstColumn, area.LastColumn);
    if (area.LastRow >= 0 && area.LastRow < area.FirstRow) std::swap(area.FirstRow, area.LastRow);
    return true;
}

}  // namespace zephrin::reader::excel
