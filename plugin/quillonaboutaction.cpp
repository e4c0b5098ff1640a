#include "plugin/quillonaboutaction.h"

#include "ground/message_boxes.h"
#include "ground/version_text.h"
#include "pane/artwork.h"

using namespace quillon;

QuillonAboutAction::QuillonAboutAction()
    : DzAction(QLatin1String("About"), QString())
{
}

void QuillonAboutAction::executeAction()
{
    QMessageBox box;
    box.setWindowTitle(QString::fromLatin1(kAboutTitle));
    box.setText(aboutText(versionText()));
    box.setIconPixmap(picture(Picture::Icon));
    box.exec();
}
