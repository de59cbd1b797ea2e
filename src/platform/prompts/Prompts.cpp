#include <zephrin/Prompts.h>

#include <QStandardPaths>

namespace zephrin {

Prompts::~Prompts() = default;

QString Prompts::ExportFolder() { return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation); }

bool Prompts::OpenDocument(const QString&) { return false; }

}  // namespace zephrin
