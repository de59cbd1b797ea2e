#include "sqlgen/CriterionText.h"

#include "platform/text/Text.h"
#include "runstate/Dialect.h"
#include "runstate/Retrieval.h"
#include "sqlgen/Blanks.h"
#include "sqlgen/CommitCriterion.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace zephrin {

namespace {

struct Values {
    QString First, Second;
    /// Taken from the list of the field's values as they stand: they have to find their row again.
    bool FirstPicked = false, SecondPicked = false;
};

bool IsPicked(const ComboState& box) {
    return box.Items.ListIndex() >= 0 && box.Items.Text() == box.Text;
}

/// The value with an apostrophe doubled: the first one of what stands in the box. The place is counted in the
/// box's own text, so a wildcard in front of the value moves the doubling one place too early.
QString DoubleApostrophe(const QString& boxText, const QString& value, const QString& restFrom,
                         qsizetype restLength) {
    const qsizetype place = boxText.indexOf(u'\'') + 1;  // Counts from 1; 0 for none.
    if (place == 0) return value;
    return value.left(place) + u'\'' + restFrom.mid(place, restLength);
}

Values ReadValues(const ZPGGlobalDeclarations& state, const CriteriaOperator& entry) {
    const FormState& form = *state.Form;
    const QString& box1 = form.cmbAvailableValues1.Text;
    const QString& box2 = form.cmbAvailableValues2.Text;
    Values values{BlankTrimmed(box1), BlankTrimmed(box2)};
    values.FirstPicked =
        IsPicked(form.cmbAvailableValues1) && !entry.WildcardInFront && !entry.WildcardBehind;
    values.SecondPicked = IsPicked(form.cmbAvailableValues2);
    // Every dialect gets the same wildcard.
    const QString wildcard = state.WildcardOverride.isEmpty() ? QStringLiteral("%") : state.WildcardOverride;
    if (entry.WildcardInFront) values.First.prepend(wildcard);
    if (entry.WildcardBehind) values.First.append(wildcard);
    values.First = DoubleApostrophe(box1, values.First, values.First, -1);
    // What follows the second value's apostrophe is taken from the first value.
    if (!values.Second.isEmpty())
        values.Second = DoubleApostrophe(box2, values.Second, values.First, values.Second.size());
    return values;
}

/// The type of the field in hand. Of a calculated field it is known only where its values were looked up and
/// one of them was picked; else, and where the database can't tell, it is Empty.
ado::DataType TypeOfField(ZPGGlobalDeclarations& state, const Values& values) {
    const FormState& form = *state.Form;
    const bool picked = values.FirstPicked || values.SecondPicked;
    if (picked && form.LookedUpType != ado::DataType::Empty) return form.LookedUpType;
    const FieldParts parts = SplitField(state, form.CriteriaField);
    if (parts.Table.isEmpty()) return ado::DataType::Empty;
    const int showing = state.Showing;
    ado::DataType type = ado::DataType::Empty;
    try {
        type = clsFieldType(state).FieldType(parts.Table, parts.Field);
    } catch (const ado::Error& error) {
        if (error.Number() == ado::ErrorNumber::OperationCancelled) throw;
    }
    // Others were let in meanwhile, and the sheet may be gone.
    if (state.Showing != showing) throw ado::Cancelled();
    return type;
}

/// What the value alone suggests. An unknown dialect keeps, for dates, what the commit before used.
QString DelimiterOfValue(const ZPGGlobalDeclarations& state, const QString& value) {
    if (!text::IsDate(value)) return QStringLiteral("'");
    if (!state.DateDelimiterOverride.isEmpty()) return state.DateDelimiterOverride;
    const QString delimiter = DateDelimiter(state);
    return delimiter.isEmpty() ? state.Form->ValueDelimiter : delimiter;
}

/// What the field's type makes of it: the type has the last word over the look of the value.
QString DelimiterForType(ado::DataType type, const QString& ofValue, const Values& values) {
    using enum ado::DataType;
    switch (type) {
        case SmallInt:
        case Integer:
        case Single:
        case Double:
        case Currency:
        case Boolean:
        case Decimal:
        case TinyInt:
        case UnsignedTinyInt:
        case BigInt:
            return {};
        case Date:
        case DBDate:
        case DBTimeStamp:
            return ofValue;
        case Char:
        case WChar:
        case VarChar:
        case LongVarChar:
        case VarWChar:
        case LongVarWChar:
            return QStringLiteral("'");
        default:
            return text::IsNumeric(values.First) || text::IsNumeric(values.Second) ? QString() : ofValue;
    }
}

/// A number that is formatted as a date counts days from the end of 1899.
QDateTime DateOfNumber(double days) {
    const double whole = std::floor(days);
    return QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC)
        .addDays(static_cast<qint64>(whole))
        .addMSecs(qRound64((days - whole) * 86400000));
}

bool IsPlausibleDay(double days) {
    return days > -657435 && days < 2958466;
}

/// True where the format tells the moment from every other one. It has no word for fractions of a second.
bool FormatCarries(const QString& format, const QDateTime& moment) {
    const QTime time = moment.time();
    const QDateTime others[] = {moment.addYears(1),
                                moment.addYears(100),
                                moment.addMonths(moment.date().month() == 12 ? -1 : 1),
                                moment.addDays(moment.date().day() > 1 ? -1 : 1),
                                QDateTime(moment.date(), QTime(time.hour(), time.minute()), Qt::UTC),
                                QDateTime(moment.date(), QTime(time.hour(), 0, time.second()), Qt::UTC),
                                QDateTime(moment.date(), QTime(0, time.minute(), time.second()), Qt::UTC)};
    const QString written = text::Format(moment, format);
    return time.msec() == 0 &&
           std::none_of(std::begin(others), std::end(others), [&](const QDateTime& other) {
               return other != moment && text::Format(other, format) == written;
           });
}

bool IsMoment(ado::DataType type) {
    return type == ado::DataType::Date || type == ado::DataType::DBDate || type == ado::DataType::DBTimeStamp;
}

/// A value of the field's list as it finds its row again: what is no date goes in as it stands, and a moment
/// that the format would cut goes in whole.
QString PickedText(const ZPGGlobalDeclarations& state, const QString& picked, ado::DataType type) {
    const auto moment = IsMoment(type) ? text::ToDate(picked) : std::nullopt;
    if (!moment) return picked;
    const bool finer = picked.contains(u'.');
    if (!finer && FormatCarries(state.Options.gDateFormat, *moment))
        return text::Format(*moment, state.Options.gDateFormat);
    // The one form that this server reads alike in all of its languages.
    return state.gDatabaseType == QLatin1String("SQL Server") ? QString(picked).replace(u' ', u'T') : picked;
}

/// A value that was typed, in the date format.
QString TypedDate(const ZPGGlobalDeclarations& state, const QString& typed) {
    const auto number = text::ToNumber(typed);
    if (number && IsPlausibleDay(*number))
        return text::Format(DateOfNumber(*number), state.Options.gDateFormat);
    return CriterionDate(state, typed);
}

/// Both values as they are written. What was typed is a date on the strength of the first one being a date.
void FormatDates(const ZPGGlobalDeclarations& state, ado::DataType type, Values& values) {
    const bool dates = text::IsDate(values.First) && !text::IsNumeric(values.First);
    if (values.FirstPicked) {
        values.First = PickedText(state, values.First, type);
    } else if (dates) {
        values.First = CriterionDate(state, values.First);
    }
    if (values.SecondPicked) {
        values.Second = PickedText(state, values.Second, type);
    } else if (dates) {
        values.Second = TypedDate(state, values.Second);
    }
}

}  // namespace

QString CriterionDate(const ZPGGlobalDeclarations& state, const QString& text) {
    const auto date = text::ToDate(text);
    return date ? text::Format(*date, state.Options.gDateFormat) : text;
}

QString DateDelimiter(const ZPGGlobalDeclarations& state) {
    if (IsFileDialect(state.gDatabaseType)) return QStringLiteral("#");
    return IsServerDialect(state.gDatabaseType) ? QStringLiteral("'") : QString();
}

QString CriterionText(ZPGGlobalDeclarations& state, const CriteriaOperator& entry) {
    if (entry.TakesNoValue()) {
        state.Form->ValueDelimiter.clear();
        return entry.Word;
    }
    Values values = ReadValues(state, entry);
    state.Form->ValueDelimiter = DelimiterOfValue(state, values.First);
    const ado::DataType type = TypeOfField(state, values);
    state.Form->ValueDelimiter = DelimiterForType(type, state.Form->ValueDelimiter, values);
    FormatDates(state, type, values);
    const QString& delimiter = state.Form->ValueDelimiter;
    QString text = entry.Word + u' ' + delimiter + values.First + delimiter;
    if (entry.TakesTwoValues()) text += QStringLiteral(" AND ") + delimiter + values.Second + delimiter;
    return BlankTrimmed(text);
}

}  // namespace zephrin
