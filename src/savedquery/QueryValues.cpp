#include "savedquery/QueryValues.h"

#include <zephrin/ado/Error.h>

namespace zephrin {

namespace {

constexpr int textSize = 255;

/// A list and the column that its entries stand in, in the order of the file.
struct ListColumn {
    const char16_t* Name;
    QStringList QueryValues::*List;
};
constexpr ListColumn listColumns[] = {
    {u"Tables", &QueryValues::Tables},
    {u"UnselTables", &QueryValues::UnselTables},
    {u"RemoveTables", &QueryValues::RemoveTables},
    {u"Fields", &QueryValues::Fields},
    {u"SelFields", &QueryValues::SelFields},
    {u"UnselFields", &QueryValues::UnselFields},
};

/// Adds a row whose cells `fill` writes; cells that don't take their value stay Null.
template <class Fill>
void AddRow(ado::Recordset& rows, QStringList& leftOut, const QString& what, Fill fill) {
    rows.AddNew();
    try {
        fill();
    } catch (const ado::Error&) {
        leftOut << what;
    }
    rows.Update();
}

bool IsOne(const QVariant& value) {
    return value.isValid() && value.toInt() == 1;
}

}  // namespace

QueryValues ReadForm(const ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    // The chosen tables reach colTables only when their tab is left; the list is ahead of it.
    const bool fromList = state.Options.gAllowTableSelection;
    return {form.txtTopX.Text,
            form.chkPercent.Value == 1,
            form.chkDistinct.Value == 1,
            fromList ? form.lstZPQTableTo.Items.Items() : state.colTables.Items(),
            form.lstZPQTableSelection.Items.Items(),
            form.RemoveTables.Items(),
            state.colFields.Items(),
            state.colSelFields.Items(),
            form.lstZPQFieldFrom.Items.Items()};
}

ado::RecordsetPtr ValuesToRows(const QueryValues& values, QStringList& leftOut) {
    auto rows = std::make_shared<ado::Recordset>();
    for (const ListColumn& column : listColumns)
        rows->Append(QString::fromUtf16(column.Name), ado::DataType::VarChar, textSize);
    rows->Append(QStringLiteral("Distinct"), ado::DataType::SmallInt);
    rows->Append(QStringLiteral("Topx"), ado::DataType::VarChar, textSize);
    rows->Append(QStringLiteral("Percent"), ado::DataType::SmallInt);
    rows->Open();
    AddRow(*rows, leftOut, QStringLiteral("Top"), [&] {
        rows->SetValue(u"Percent", values.Percent ? 1 : 0);
        rows->SetValue(u"Distinct", values.Distinct ? 1 : 0);
        rows->SetValue(u"Topx", values.TopX);
    });
    for (int column = 0; column < static_cast<int>(std::size(listColumns)); ++column)
        for (const QString& text : values.*listColumns[column].List)
            AddRow(*rows, leftOut, text, [&] { rows->SetValue(column, text); });
    return rows;
}

QueryValues RowsToValues(ado::Recordset& rows) {
    QueryValues values;
    if (rows.RecordCount() == 0) return values;
    rows.MoveFirst();
    const auto first = [&](QStringView column) {
        const int index = rows.FieldIndex(column);
        return index < 0 ? QVariant() : rows.Value(index);
    };
    values.Distinct = IsOne(first(u"Distinct"));
    values.Percent = IsOne(first(u"Percent"));
    values.TopX = first(u"Topx").toString();
    for (const ListColumn& column : listColumns) {
        const int index = rows.FieldIndex(QStringView(column.Name));
        if (index < 0) continue;
        for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext())
            if (const QString text = rows.Text(index); !text.isEmpty()) (values.*column.List) << text;
    }
    return values;
}

}  // namespace zephrin
