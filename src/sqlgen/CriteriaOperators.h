#pragma once

#include <QString>
#include <QStringList>

namespace zephrin {

/// What an operator of the list means for a criterion.
struct CriteriaOperator {
    /// As the list shows it.
    QLatin1String Listed;
    /// As the statement has it.
    QLatin1String Word;
    bool WildcardInFront;
    bool WildcardBehind;
    /// An exclusion: with AND it has to go into every alternative, whatever stands there already.
    bool Distributes;
    /// A second criterion of this kind on a field is another alternative (OR) rather than a further
    /// condition.
    bool DefaultsToOr;

    /// "is null" and "is not null", which take no value.
    bool TakesNoValue() const { return Word.endsWith(QLatin1String("NULL")); }
    /// "between", which takes two.
    bool TakesTwoValues() const { return Word == QLatin1String("BETWEEN"); }
};

/// The operators of Where mode, in the order of the list.
QStringList CriteriaOperatorList();

/// The operator that the list shows as `listed`, or null.
const CriteriaOperator* FindCriteriaOperator(const QString& listed);

}  // namespace zephrin
