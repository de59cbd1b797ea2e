#pragma once

#include "wizard/WizardPage.h"

#include <array>

class QGridLayout;
class QGroupBox;
class QLabel;
class QPushButton;

namespace zephrin {

class ComboBox;
class ListBox;

namespace controls {
class DataGrid;
}

/// "Build Joins": pick a pair of tables, lock it, pick a field of each, add the join; the joins stand in the
/// grid.
class JoinTabPage : public WizardPage {
    Q_OBJECT
 public:
    explicit JoinTabPage(WizardHost& wizardHost);
    void ShowState(FormState& form) override;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void AddSide(QGridLayout* pair, int index);
    void AddMiddle(QGridLayout* pair);
    QWidget* MakeGrid();
    void ConnectPair();
    void ConnectGrid();
    bool CompareListKey(const QKeyEvent& event);
    bool IsInGrid(const QWidget* widget) const;
    void ChooseComparison(int row);
    void ShowLock(const ButtonState& lock);
    void ShowCompareList(ListBoxState& state);

    std::array<QLabel*, 2> lblJoinTable{};
    std::array<ComboBox*, 2> cmbJoinTables{};
    std::array<ListBox*, 2> lstJoinFields{};
    ComboBox* cmbJoinType = nullptr;
    QPushButton* cmdlockTables = nullptr;
    QPushButton* cmdAddJoin = nullptr;
    QPushButton* cmdResetJoins = nullptr;
    controls::DataGrid* dgrJoins = nullptr;
    ListBox* lstJoinCompare = nullptr;
};

}  // namespace zephrin
