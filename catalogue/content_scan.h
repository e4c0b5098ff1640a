// content_scan.h - the Pose Finder's scan of some directories, in a home of its own that is gone
// afterwards. Nothing of the user's is written.
// Owns: the process's application, scene, figure, index and ranks, as long as it lives; one at a
// time. Needs a QApplication.
#pragma once

#include "finder/scan_verdicts.h"

#include "dzapp.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QTemporaryDir>

#include <functional>
#include <memory>

class DzFigure;

namespace quillon {

struct CatalogueOptions;

// info: what the scan's progress window would show.
typedef std::function<void(const QString& info)> ShowScan;

class ContentScan {
public:
    explicit ContentScan(const CatalogueOptions&);
    ~ContentScan();

    // Fills the index (pose_index.h) and the ranks. False with *why.
    bool run(const CatalogueOptions&, const ShowScan&, ScanReport* report, QString* why);

    // Bits by PoseType of the categories that the entry is browsed in, from Sitting to UpsideDown.
    unsigned categoriesOf(int entry) const;

private:
    QTemporaryDir m_home;
    DzUndoStack m_undo;
    DzScene m_scene;
    std::unique_ptr<DzApp> m_app;
    DzFigure* m_figure = nullptr; // the scene's
    std::vector<unsigned> m_categories; // by entry
};

} // namespace quillon
