#include "DemoWindow.h"
#include "Guide.h"
#include "Palettes.h"
#include "Player.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include <cstdio>

namespace {

/// Windows that nobody sees have no size hints and no place above others, and the offscreen platform says so
/// each time.
void DropPlatformWarnings() {
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (text.contains(QLatin1StringView("This plugin does not support"))) return;
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
    });
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zephrin-demo"));
    QApplication::setApplicationDisplayName(QObject::tr("Zephrin demo"));

    QCommandLineParser arguments;
    arguments.setApplicationDescription(QObject::tr("A host application with one Zephrin control."));
    arguments.addHelpOption();
    const QCommandLineOption play(QStringLiteral("play"),
                                  QObject::tr("Play a query by itself, print it, and end."));
    const QCommandLineOption pictures(QStringLiteral("pictures"),
                                      QObject::tr("Folder for pictures of the play."),
                                      QStringLiteral("folder"));
    const QCommandLineOption dark(QStringLiteral("dark"), QObject::tr("Start in dark colours."));
    const QCommandLineOption guide(QStringLiteral("guide"),
                                   QObject::tr("Take the pictures of the user guide, and end."));
    arguments.addOptions({play, guide, pictures, dark});
    arguments.process(application);

    const bool plays = arguments.isSet(play) || arguments.isSet(guide);
    // A play looks the same on every desktop; a person keeps the desktop's own style.
    if (plays || arguments.isSet(dark))
        demo::UseColours(arguments.isSet(dark) ? demo::Colours::Dark : demo::Colours::Light);

    if (plays) DropPlatformWarnings();
    // The one font that scripts/setup brings along.
    if (arguments.isSet(guide)) QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));

    demo::DemoWindow window;
    window.show();
    if (plays) {
        QApplication::setQuitOnLastWindowClosed(false);
        if (arguments.isSet(guide)) return demo::Guide(window, arguments.value(pictures)).Run();
        return demo::Player(window, arguments.value(pictures)).Run();
    }
    QTimer::singleShot(0, &window, &demo::DemoWindow::ConnectAndShow);
    return QApplication::exec();
}
