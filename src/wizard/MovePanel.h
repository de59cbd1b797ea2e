#pragma once

#include "runstate/FormState.h"

#include <QGroupBox>
#include <QString>

class QLabel;
class QPushButton;

namespace zephrin {

class ListBox;

/// Two lists side by side with the four buttons that move entries between them.
class MovePanel : public QGroupBox {
    Q_OBJECT
 public:
    /// Design names of the controls and the resources of their captions.
    struct Names {
        QString Frame, From, To, Buttons;  ///< Buttons is the prefix, "cmdZPQTable"
        int FrameTag, FromTag, ToTag;
        QString MoveRight, MoveAllRight, MoveLeft, MoveAllLeft;  ///< what the buttons do, in words
    };
    explicit MovePanel(const Names& names);

    /// A button that goes off under the user's fingers leaves the focus in its own list: the toolkit would
    /// hand it to the next button, and the next key would move everything.
    void ShowButtons(const ButtonState& right, const ButtonState& rightAll, const ButtonState& left,
                     const ButtonState& leftAll);

    ListBox* From;
    ListBox* To;
    QPushButton* Right;
    QPushButton* RightAll;
    QPushButton* Left;
    QPushButton* LeftAll;
};

}  // namespace zephrin
