#pragma once

#include <zephrin/Zephrin.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QList>

namespace demo {

/// One check box for each flag of the control. A flag that drags another one along, or refuses to be set,
/// shows it.
class OptionPanel : public QGroupBox {
    Q_OBJECT
 public:
    OptionPanel(zephrin::Zephrin* control, QWidget* parent = nullptr);

 private:
    void Refresh();

    zephrin::Zephrin* control;
    QList<QCheckBox*> boxes;
};

}  // namespace demo
