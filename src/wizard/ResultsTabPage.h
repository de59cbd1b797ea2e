#pragma once

#include "wizard/WizardPage.h"

class QGroupBox;
class QLabel;
class QPushButton;

namespace zephrin {

namespace controls {
class ColouredText;
class DataGrid;
}  // namespace controls

/// "Query Results": the outcome of the last run, its rows, and what can be done with them.
class ResultsTabPage : public WizardPage {
    Q_OBJECT
 public:
    explicit ResultsTabPage(WizardHost& wizardHost);
    void ShowState(FormState& form) override;

 private:
    QWidget* MakeFoot();
    void ConnectControls();
    void Export(ZPGGlobalDeclarations& state);
    void ShowTruncation(const GridState& grid);

    controls::ColouredText* txtSQLErrors = nullptr;
    controls::DataGrid* dgrQueryResults = nullptr;
    QLabel* lblTruncated = nullptr;
    QPushButton* cmdAsc = nullptr;
    QPushButton* cmdDesc = nullptr;
    QPushButton* cmdResAddSplit = nullptr;
    QPushButton* cmdResDeleteSplit = nullptr;
    QGroupBox* fraExcel = nullptr;
    QPushButton* cmdExcel = nullptr;
};

}  // namespace zephrin
