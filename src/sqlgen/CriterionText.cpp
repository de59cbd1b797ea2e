#include "sqlgen/CriterionText.h"

#include "platform/text/Text.h"
#include "runstate/Dialect.h"
#include "runstate/Retrieval.h"
#include "sqlgen/Blanks.h"
#include "sqlgen/CommitCriterion.h"

#include <cmath>

namespace zephrin {

namespace {

struct Values {
    QString First, Second;
};

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

/// The type of the field in hand; Empty where the database can't tell, as for a calculated field.
ado::DataType TypeOfField(ZPGGlobalDeclarations& state) {
    const FieldParts parts = SplitField(state, state.Form->CriteriaField);
    if (parts.Table.isEmpty()) return ado::DataType::Empty;
    try {
        return clsFieldType(state).FieldType(parts.Table, parts.Field);
    } catch (const ado::Error&) {
        return ado::DataType::Empty;
    }
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

/// Both values in the date format, on the strength of the first one being a date.
void FormatDates(const ZPGGlobalDeclarations& state, Values& values) {
    if (!text::IsDate(values.First) || text::IsNumeric(values.First)) return;
    values.First = CriterionDate(state, values.First);
    const auto number = text::ToNumber(values.Second);
    if (number && IsPlausibleDay(*number)) {
        values.Second = text::Format(DateOfNumber(*number), state.Options.gDateFormat);
    } else {
        values.Second = CriterionDate(state, values.Second);
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
    state.Form->ValueDelimiter = DelimiterForType(TypeOfField(state), state.Form->ValueDelimiter, values);
    FormatDates(state, values);
    const QString& delimiter = state.Form->ValueDelimiter;
    QString text = entry.Word + u' ' + delimiter + values.First + delimiter;
    if (entry.TakesTwoValues()) text += QStringLiteral(" AND ") + delimiter + values.Second + delimiter;
    return BlankTrimmed(text);
}

}  // namespace zephrin
