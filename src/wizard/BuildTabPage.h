#pragma once

#include "wizard/WizardPage.h"

#include <array>

class QCheckBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace zephrin {

class ComboBox;
class ListBox;

namespace controls {
class ColouredText;
class DataGrid;
class Splitter;
}  // namespace controls

/// "Build Query": on the left a sentence of field, operator and values; on the right the statement, or the
/// criteria as a grid.
class BuildTabPage : public WizardPage {
    Q_OBJECT
 public:
    explicit BuildTabPage(WizardHost& wizardHost);
    void ShowState(FormState& form) override;
    bool CommitEdits() override;

 private:
    QWidget* MakeSentence();
    QWidget* MakeModes();
    QWidget* MakeLists();
    QWidget* MakeValues();
    QWidget* MakeEditButtons();
    QWidget* MakeRight();
    QWidget* MakeOptions();
    QWidget* MakeLegend();
    QWidget* MakeGridFoot();
    QWidget* MakeRunButtons();
    void ConnectLeft();
    void ConnectValueBox(int box, ListState* (*items)(FormState&));
    void CreateCalcField(ZPGGlobalDeclarations& state);
    void EditRows(ZPGGlobalDeclarations& state, const QString& mode);
    void ConnectRight();
    void ConnectGrid();
    void EditCell(ZPGGlobalDeclarations& state, int column);
    void SetVisitOrder();
    void ShowSentence(FormState& form);
    void ShowStatement(FormState& form);
    void ShowRunButtons(FormState& form);

    controls::Splitter* halves = nullptr;
    std::array<QRadioButton*, 3> optQuery{};
    QGroupBox* fraBuildQuery = nullptr;
    ListBox* lstSelectedFields = nullptr;
    ListBox* lstOperands = nullptr;
    std::array<ComboBox*, 2> cmbAvailableValues{};
    QPushButton* cmdFieldValues = nullptr;
    QGroupBox* fraAndOr = nullptr;
    std::array<QRadioButton*, 2> optAndOr{};
    QPushButton* cmdCommit = nullptr;
    QPushButton* cmdEditWhere = nullptr;
    QPushButton* cmdEditGroup = nullptr;
    QPushButton* cmdEditOrder = nullptr;
    QPushButton* cmdEditCalcField = nullptr;
    QPushButton* cmdCalcField = nullptr;

    QGroupBox* fraQueryOptions = nullptr;
    QCheckBox* chkDistinct = nullptr;
    QLabel* lblTopX = nullptr;
    QLineEdit* txtTopX = nullptr;
    QCheckBox* chkPercent = nullptr;
    std::array<QLabel*, 2> lblSQLLabel{};
    controls::ColouredText* txtSQL = nullptr;
    QFrame* fraTxt = nullptr;
    QLabel* txtField = nullptr;
    QLabel* txtOr = nullptr;
    QLabel* txtValue = nullptr;
    controls::DataGrid* dgrSQL = nullptr;
    QPushButton* cmdSplit = nullptr;
    QPushButton* cmdDeleteSplit = nullptr;
    QPushButton* cmdSQLView = nullptr;
    QPushButton* cmdResetSQL = nullptr;
    QPushButton* cmdRunQuery = nullptr;
    QPushButton* cmdCreateView = nullptr;
};

}  // namespace zephrin
