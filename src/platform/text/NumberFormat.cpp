#include "platform/text/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace zephrin::text {

namespace {

/// A number as digits: 0.DDD times ten to the power of Point, without zeros at the ends.
struct Decimal {
    QByteArray Digits;
    int Point = 0;
};

/// Fifteen digits hide what binary fractions add at the end.
Decimal DecimalOf(double value) {
    const QByteArray text = QByteArray::number(std::fabs(value), 'e', 14);
    Decimal decimal;
    decimal.Digits = text.left(1) + text.mid(2, 14);
    decimal.Point = text.mid(text.indexOf('e') + 1).toInt() + 1;
    while (decimal.Digits.endsWith('0')) decimal.Digits.chop(1);
    if (decimal.Digits.isEmpty()) decimal.Point = 0;
    return decimal;
}

/// Keeps so many digits behind the point.
void RoundTo(Decimal& decimal, int places) {
    const int kept = decimal.Point + places;
    if (kept >= decimal.Digits.size()) return;
    const bool up = kept >= 0 && decimal.Digits[kept] >= '5';
    decimal.Digits.truncate(std::max(kept, 0));
    if (up) {
        qsizetype at = decimal.Digits.size() - 1;
        for (; at >= 0 && decimal.Digits[at] == '9'; --at) decimal.Digits[at] = '0';
        if (at >= 0) {
            decimal.Digits[at] = char(decimal.Digits[at] + 1);
        } else {
            decimal.Digits.prepend('1');
            ++decimal.Point;
        }
    }
    while (decimal.Digits.endsWith('0')) decimal.Digits.chop(1);
    if (decimal.Digits.isEmpty()) decimal.Point = 0;
}

/// A piece of a picture: the place of a digit, or something that is written as it is.
struct Piece {
    enum { Optional, Required, Point, Exponent, Literal } Kind = Literal;
    QString Text;
};

/// One section of a picture.
struct Picture {
    std::vector<Piece> Pieces;
    int Whole = 0;     ///< places in front of the point
    int Required = 0;  ///< those of them from the first 0 on
    int Fraction = 0;  ///< places behind the point
    int Shift = 0;     ///< by how many tens the number is multiplied
    int Exponent = 0;  ///< least digits of the exponent, 0 for none
    bool Grouped = false;
    bool PlusExponent = false;

    bool HasPlaces() const { return Whole + Fraction > 0; }
};

Picture ReadPicture(QStringView text, PictureStyle style) {
    Picture picture;
    bool behindPoint = false;
    int commas = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar next = text[at];
        const bool place = next == u'0' || next == u'#';
        if (place && commas > 0) {
            picture.Grouped = true;
            commas = 0;
        }
        if (place) {
            picture.Pieces.push_back({next == u'0' ? Piece::Required : Piece::Optional, {}});
            ++(behindPoint ? picture.Fraction : picture.Whole);
            if (!behindPoint && (next == u'0' || picture.Required > 0)) ++picture.Required;
        } else if (next == u'.' && !behindPoint) {
            behindPoint = true;
            // Commas in front of the point divide by thousands each.
            picture.Shift -= 3 * std::exchange(commas, 0);
            picture.Pieces.push_back({Piece::Point, {}});
        } else if (next == u',' && !behindPoint && picture.Whole > 0) {
            ++commas;
        } else if (next == u',') {
            continue;
        } else if (next == u'\\') {
            if (++at < text.size()) picture.Pieces.push_back({Piece::Literal, text.sliced(at, 1).toString()});
        } else if (next == u'"' || (next == u'\'' && style == PictureStyle::Server)) {
            const qsizetype close = text.indexOf(next, at + 1);
            const qsizetype end = close < 0 ? text.size() : close;
            picture.Pieces.push_back({Piece::Literal, text.sliced(at + 1, end - at - 1).toString()});
            at = end;
        } else if ((next == u'E' || next == u'e') && at + 2 < text.size() &&
                   (text[at + 1] == u'+' || text[at + 1] == u'-') && text[at + 2] == u'0' &&
                   picture.HasPlaces()) {
            picture.PlusExponent = text[at + 1] == u'+';
            picture.Pieces.push_back({Piece::Exponent, QString(next)});
            for (at += 2; at < text.size() && text[at] == u'0'; ++at) ++picture.Exponent;
            --at;
        } else {
            if (next == u'%') picture.Shift += 2;
            picture.Pieces.push_back({Piece::Literal, QString(next)});
        }
    }
    picture.Shift -= 3 * commas;
    return picture;
}

/// Sections stand between semicolons that are not quoted.
QList<QStringView> SectionsOf(QStringView format, PictureStyle style) {
    QList<QStringView> sections;
    qsizetype from = 0;
    QChar quote;
    for (qsizetype at = 0; at < format.size(); ++at) {
        const QChar next = format[at];
        if (next == u'\\' && quote.isNull()) {
            ++at;
        } else if (!quote.isNull()) {
            if (next == quote) quote = QChar();
        } else if (next == u'"' || (next == u'\'' && style == PictureStyle::Server)) {
            quote = next;
        } else if (next == u';') {
            sections << format.sliced(from, at - from);
            from = at + 1;
        }
    }
    return sections << format.sliced(std::min(from, format.size()));
}

/// Writes the digits into the places of the picture.
QString Filled(const Picture& picture, Decimal decimal, PictureStyle style, const QLocale& locale) {
    int exponent = 0;
    if (picture.Exponent > 0 && !decimal.Digits.isEmpty()) {
        exponent = decimal.Point - std::max(picture.Whole, 1);
        decimal.Point -= exponent;
        const int before = decimal.Point;
        RoundTo(decimal, picture.Fraction);
        exponent += decimal.Point - before;
        decimal.Point = before;
    } else {
        RoundTo(decimal, picture.Fraction);
    }
    QByteArray whole =
        decimal.Digits.left(std::max(decimal.Point, 0)).leftJustified(std::max(decimal.Point, 0), '0');
    whole = whole.rightJustified(picture.Required, '0');
    QByteArray fraction = decimal.Point >= 0 ? decimal.Digits.mid(decimal.Point)
                                             : QByteArray(-decimal.Point, '0') + decimal.Digits;
    QString out;
    int wholePlaces = 0;
    int fractionPlaces = 0;
    bool behindPoint = false;
    const auto putWhole = [&](qsizetype index) {
        out += QLatin1Char(whole[index]);
        const qsizetype left = whole.size() - index - 1;
        if (picture.Grouped && left > 0 && left % 3 == 0) out += locale.groupSeparator();
    };
    for (const Piece& piece : picture.Pieces) {
        switch (piece.Kind) {
            case Piece::Optional:
            case Piece::Required:
                if (behindPoint) {
                    const int place = fractionPlaces++;
                    if (place < fraction.size())
                        out += QLatin1Char(fraction[place]);
                    else if (piece.Kind == Piece::Required)
                        out += u'0';
                    break;
                }
                // What has no place of its own stands in front of the first.
                if (wholePlaces == 0)
                    for (qsizetype index = 0; index < whole.size() - picture.Whole; ++index) putWhole(index);
                if (const qsizetype index = whole.size() - picture.Whole + wholePlaces; index >= 0)
                    putWhole(index);
                ++wholePlaces;
                break;
            case Piece::Point:
                behindPoint = true;
                if (picture.Whole == 0)
                    for (qsizetype index = 0; index < whole.size(); ++index) putWhole(index);
                {
                    const auto required = std::any_of(picture.Pieces.begin(), picture.Pieces.end(),
                                                      [&, seen = false](const Piece& other) mutable {
                                                          seen = seen || other.Kind == Piece::Point;
                                                          return seen && other.Kind == Piece::Required;
                                                      });
                    if (style == PictureStyle::Classic || required || !fraction.isEmpty())
                        out += locale.decimalPoint();
                }
                break;
            case Piece::Exponent:
                out += piece.Text;
                out += exponent < 0           ? QStringLiteral("-")
                       : picture.PlusExponent ? QStringLiteral("+")
                                              : QString();
                out += QString::number(std::abs(exponent)).rightJustified(picture.Exponent, u'0');
                break;
            case Piece::Literal:
                out += piece.Text;
                break;
        }
    }
    return out;
}

constexpr std::array<std::pair<QLatin1StringView, QLatin1StringView>, 8> named{{
    {QLatin1StringView("currency"), QLatin1StringView("$#,##0.00;($#,##0.00)")},
    {QLatin1StringView("fixed"), QLatin1StringView("0.00")},
    {QLatin1StringView("standard"), QLatin1StringView("#,##0.00")},
    {QLatin1StringView("percent"), QLatin1StringView("0.00%")},
    {QLatin1StringView("scientific"), QLatin1StringView("0.00E+00")},
    {QLatin1StringView("yes/no"), QLatin1StringView("\"Yes\";\"Yes\";\"No\"")},
    {QLatin1StringView("true/false"), QLatin1StringView("\"True\";\"True\";\"False\"")},
    {QLatin1StringView("on/off"), QLatin1StringView("\"On\";\"On\";\"Off\"")},
}};

}  // namespace

bool IsNumberFormat(QStringView format) {
    if (format.compare(QLatin1StringView("general number"), Qt::CaseInsensitive) == 0) return true;
    for (const auto& [name, meaning] : named)
        if (format.compare(name, Qt::CaseInsensitive) == 0) return true;
    return ReadPicture(format, PictureStyle::Classic).HasPlaces();
}

QString FormatNumber(double value, QStringView format, PictureStyle style, const QLocale& locale) {
    const QString plain = QString::number(value, 'g', 15);
    if (format.isEmpty()) return plain;
    if (style == PictureStyle::Classic) {
        if (format.compare(QLatin1StringView("general number"), Qt::CaseInsensitive) == 0) return plain;
        for (const auto& [name, meaning] : named)
            if (format.compare(name, Qt::CaseInsensitive) == 0)
                return FormatNumber(value, QString(meaning), style, locale);
    }
    const QList<QStringView> sections = SectionsOf(format, style);
    const auto isThere = [&](qsizetype index) {
        return index < sections.size() && !sections[index].isEmpty();
    };
    const qsizetype wanted = value < 0 && isThere(1) ? 1 : value == 0 && isThere(2) ? 2 : 0;
    const Picture picture = ReadPicture(sections[wanted], style);
    Decimal decimal = DecimalOf(value);
    if (!decimal.Digits.isEmpty()) decimal.Point += picture.Shift;
    const QString text = Filled(picture, decimal, style, locale);
    // A section of its own says how a negative number looks; what is rounded to 0 isn't negative any more.
    const bool any =
        std::any_of(text.begin(), text.end(), [](QChar digit) { return digit >= u'1' && digit <= u'9'; });
    return value < 0 && wanted == 0 && any ? u'-' + text : text;
}

}  // namespace zephrin::text
