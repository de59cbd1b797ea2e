#pragma once

#include <zephrin/Export.h>

#include <QByteArray>
#include <QList>
#include <QVariant>
#include <QWidget>

#include <functional>
#include <memory>
#include <utility>

namespace zephrin {

class Prompts;

/// The connection page: here a developer, or a host's administrator, tries a connection, chooses the tables
/// that the wizard will offer, and stores both in the properties of a Zephrin control. A form editor or a
/// host puts it into a dialog of its own.
///
///     auto* page = new ZPBConnection(&dialog);
///     connect(page, &ZPBConnection::Changed, applyButton, &QWidget::setEnabled);
///     connect(applyButton, &QPushButton::clicked, page, &ZPBConnection::PropertyPage_ApplyChanges);
///     page->PropertyPage_SelectionChanged({control});
///
/// The page has a connection of its own, closed with it; nothing but the five properties reaches the control,
/// and only when they are applied. It connects when a command type is chosen, and when it is given a control
/// that has both a connection string and a command type.
class ZEPHRIN_EXPORT ZPBConnection : public QWidget {
    Q_OBJECT
 public:
    /// Empty and disabled until it is given a control.
    explicit ZPBConnection(QWidget* parent = nullptr);
    ~ZPBConnection() override;

    /// Puts the host's own boxes and dialogs in the place of the default ones; null brings these back.
    void SetPrompts(std::shared_ptr<Prompts> prompts);

    /// Takes the values of an Apply to the control, in their order. Without one each is set as a property of
    /// the control; a form editor brings its own, that goes through its undo stack.
    using Writer =
        std::function<void(QObject& control, const QList<std::pair<QByteArray, QVariant>>& values)>;
    /// Has `writer` take the values from now on; an empty one brings the setting of properties back.
    void SetWriter(Writer writer);

    /// Something was changed since the page was filled or applied.
    bool IsChanged() const;

 public Q_SLOTS:
    /// Fills the page from the first of these controls, by the names of the properties; it is unmarked after
    /// that. Without any it is empty and disabled.
    void PropertyPage_SelectionChanged(const QList<QObject*>& SelectedControls);
    /// Gives the page to the first selected control. A time-out that is no 32-bit number is left out.
    void PropertyPage_ApplyChanges();

 Q_SIGNALS:
    /// The page became marked as changed, so that Apply is worth offering, or unmarked again.
    void Changed(bool changed);

 private:
    class Private;
    std::unique_ptr<Private> d;
};

}  // namespace zephrin
