#include "savedquery/QueryFamily.h"

#include <QFileInfo>

namespace zephrin {

namespace {

constexpr int suffixLength = 4;

}  // namespace

const std::array<Companion, CompanionCount>& Companions() {
    using State = ZPGGlobalDeclarations;
    static constexpr std::array<Companion, CompanionCount> companions{{
        {u"rsWhere", u"rsWhere.dat", &State::rsWhere, true},
        {u"rsGroupBy", u"rsGroupBy.dat", &State::rsGroupBy, false},
        {u"rsOrderBy", u"rsOrderBy.dat", &State::rsOrderBy, false},
        {u"rsCalcFields", u"rsCalcFields.dat", &State::rsCalcFields, false},
        {u"rsZPBQueryValues", u"rsQueryValues.dat", nullptr, true},
        {u"rsJoins", u"rsJoins.dat", &State::rsJoins, false},
        {u"rsJoinTable", u"rsJoinTable.dat", &State::rsJoinTable, false},
        {u"rsJoinTablesUsed", u"rsJoinTablesUsed.dat", &State::rsJoinTablesUsed, false},
        {u"rsAlias", u"rsAlias.dat", &State::rsAlias, false},
    }};
    return companions;
}

QString QueryBase(const QString& path) {
    const QFileInfo file(path);
    if (file.fileName().size() <= suffixLength) return {};
    return file.absoluteFilePath().chopped(suffixLength);
}

QString MasterPath(const QString& base) {
    return base + QStringLiteral(".zpb");
}

QString CompanionPath(const QString& base, const Companion& companion) {
    return base + QString::fromUtf16(companion.FileName);
}

QString QueryFilter() {
    return QStringLiteral("zpb(*.zpb)|*.zpb");
}

}  // namespace zephrin
