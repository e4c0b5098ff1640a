#include "plugin/plugin_definition.h"

#include "ground/version_text.h"
#include "plugin/class_factories.h"

#include "dzapp.h"

// Without an application, as when something else than the host loads the library, the link leads
// nowhere; the rest holds.
static QString descriptionText()
{
    const QString documentation = dzApp ? dzApp->getDocumentationPath() : QString();
    return QString::fromLatin1("<a href=\"%1/Quillon/index.htm\">Documentation</a><br><br>"
                               "This is the Quillon plugin.")
        .arg(documentation);
}

namespace {

// Known: the object is made with its name, and scripts read author, version and description of it.
// Likely: these three setters, of which a class of ours may call protected ones, too; setVersion
// may take a DzVersion instead. Else the macros DZ_PLUGIN_DEFINITION, DZ_PLUGIN_AUTHOR,
// DZ_PLUGIN_VERSION and DZ_PLUGIN_DESCRIPTION, which define the object and both functions below.
struct DescribedPlugin : DzPlugin {
    DescribedPlugin()
        : DzPlugin(QLatin1String("Quillon"))
    {
        setAuthor(QLatin1String("Brannoc Ltd"));
        setVersion(quillon::kVersionMajor, quillon::kVersionMinor, 0, 0);
        setDescription(descriptionText());
    }
};

// Built when the library is loaded, from top to bottom; destroyed in reverse when it is unloaded.
// The host stores the GUIDs: they stay the same in every release.
struct Definition {
    DescribedPlugin plugin;
    DzQuillonPaneFactory pane {"5d0c7b1e-93a4-4f6b-8f0a-2c6e41b7d913"};
    DzQuillonPaneActionFactory paneAction {"c2f4a86d-1b57-4e39-a0d8-7f95be34c620"};
    QuillonAboutActionFactory aboutAction {"8e61d3f9-47c2-4ab5-b9e7-06d28f5a1c74"};

    // Likely: addClassFactory. Else DZ_PLUGIN_CLASS_GUID for each class.
    Definition()
    {
        plugin.addClassFactory(&pane);
        plugin.addClassFactory(&paneAction);
        plugin.addClassFactory(&aboutAction);
    }
};

} // namespace

static Definition g_definition;

DzVersion getSDKVersion()
{
    return DzVersion(4, 5, 0, 100);
}

DzPlugin* getPluginDefinition()
{
    return &g_definition.plugin;
}
