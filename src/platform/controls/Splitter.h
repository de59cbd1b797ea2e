#pragma once

#include <QSplitter>

namespace zephrin::controls {

/// A splitter whose handles the keyboard reaches too: Tab goes to a handle, the arrow keys move it, Home and
/// End move it as far as it goes.
class Splitter : public QSplitter {
    Q_OBJECT
 public:
    explicit Splitter(Qt::Orientation orientation, QWidget* parent = nullptr);

    /// What a screen reader calls the handles, those to come included.
    void SetHandleName(const QString& name);

 protected:
    QSplitterHandle* createHandle() override;

 private:
    QString handleName;
};

}  // namespace zephrin::controls
