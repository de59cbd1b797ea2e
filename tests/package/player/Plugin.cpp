#include "Player.h"

#include <QGenericPlugin>

/// Qt loads it into any program that is started with QT_QPA_GENERIC_PLUGINS=player; ZEPHRIN_PLAY holds the
/// steps, one a line.
class PlayerPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "player.json")
 public:
    QObject* create(const QString&, const QString&) override {
        return new Player(qEnvironmentVariable("ZEPHRIN_PLAY").split(u'\n', Qt::SkipEmptyParts));
    }
};

#include "Plugin.moc"
