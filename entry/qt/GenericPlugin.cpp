// The generic plug-in "tarni": Qt loads it by name, and with it the agent's library, which starts
// the agent by itself. Where the launcher waits for a program to load Qt, it is told.
#include <dlfcn.h>

#include <QtGui/QGenericPlugin>

class TarniPlugin : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "tarni.json")

 public:
  QObject* create(const QString&, const QString&) override {
    if (void* const launch = dlsym(RTLD_DEFAULT, "tarniLaunch")) {
      reinterpret_cast<const char* (*)()>(launch)();
    }
    return new QObject(this);
  }
};

#include "GenericPlugin.moc"
