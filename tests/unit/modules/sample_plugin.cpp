// A module with the two entry points, built twice: for the host's own version of the interface,
// and for one that is still to come.
#include "dzaction.h"
#include "dzclassfactory.h"
#include "dzplugin.h"

class SampleAction : public DzAction {
    Q_OBJECT
public:
    SampleAction()
        : DzAction("Sample", "An action from a module")
    {
    }
};

class SampleFactory : public DzClassFactory {
public:
    SampleFactory()
        : DzClassFactory(&SampleAction::staticMetaObject,
            DzGuid::fromString("0b0f6f7e-5a3c-4d21-9d60-3f2f3f8b9c11"))
    {
    }
    using DzClassFactory::createInstance;
    QObject* createInstance() const override
    {
        return new SampleAction;
    }
};

static DzPlugin g_plugin("Sample");
static SampleFactory g_factory;

extern "C" DZEXPORT DzVersion getSDKVersion()
{
    return DzVersion(SAMPLE_SDK_VERSION);
}

extern "C" DZEXPORT DzPlugin* getPluginDefinition()
{
    if (g_plugin.getNumClassFactories() == 0) {
        g_plugin.setAuthor("Somebody");
        g_plugin.setVersion(1, 2, 3, 4);
        g_plugin.addClassFactory(&g_factory);
    }
    return &g_plugin;
}

#include "sample_plugin.moc"
