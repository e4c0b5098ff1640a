#include "ground/host_calls.h"

#include "dzaction.h"
#include "dzelement.h"
#include "dzfloatproperty.h"
#include "dznode.h"
#include "dzprogress.h"
#include "dzproperty.h"
#include "dzscript.h"

#include <QString>

namespace quillon {

bool isCancelled(DzProgress* progress)
{
    return progress && progress->isCancelled();
}

void setIconFile(DzAction* action, const QString& path)
{
    action->setIconFile(path);
}

bool hasSecondLimit(const DzFloatProperty* channel)
{
    return channel->isClamped();
}

void setSecondLimit(DzFloatProperty* channel, bool on)
{
    channel->setIsClamped(on);
}

DzProperty* findExactProperty(const DzElement* element, const QString& name)
{
    return element->findProperty(name, true);
}

DzVec3 lowCorner(const DzBox3& box)
{
    return box.getMin();
}

DzVec3 highCorner(const DzBox3& box)
{
    return box.getMax();
}

void setOriginPoint(DzNode* node, const DzVec3& originCm)
{
    node->setOrigin(originCm, true);
}

// ---- the pane that lists content

// clang-format off
static const char* const kBrowseScript[] = {
    "var oPaneMgr = MainWindow.getPaneMgr();",
    "if (oPaneMgr)",
    "{",
    "   var oPane = oPaneMgr.findPane(\"DzContentLibraryPane\");",
    "   if (oPane)",
    "   {",
    "      oPane.browseToNativeFolder(\"%1\");",
    "   }",
    "}",
};
// clang-format on

// As it stands between the quotes of a script's text. A folder may have any name.
static QString quoted(const QString& text)
{
    QString escaped;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool endsLine = c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar(0x2028)
            || c == QChar(0x2029);
        if (endsLine) {
            escaped += QString::fromLatin1("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
            continue;
        }
        if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
            escaped += QLatin1Char('\\');
        escaped += c;
    }
    return escaped;
}

void showFolderInContentPane(const QString& folder)
{
    DzScript script;
    for (const char* line : kBrowseScript) {
        QString text = QLatin1String(line);
        const bool takesFolder = text.contains(QLatin1String("%1"));
        if (takesFolder && folder.isNull())
            continue;
        if (takesFolder)
            text.replace(QLatin1String("%1"), quoted(folder));
        script.addLine(text);
    }
    script.execute();
}

} // namespace quillon
