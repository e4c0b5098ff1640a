// bench_window_fixture.h - the window of posebench over a scene and a home of its own, shown.
#pragma once

#include "host/posebench/posebench_window.h"
#include "host/posebench/scene_commands.h"

#include "dzapp.h"
#include "dzfigure.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QTemporaryDir>
#include <QtTest>

namespace quillon {

struct BenchWindow {
    BenchWindow()
        : app(setup(home.path()))
    {
        window.reset(new PoseBenchWindow);
        window->show();
        const bool exposed = QTest::qWaitForWindowExposed(window.get());
        Q_ASSERT(exposed);
        Q_UNUSED(exposed);
    }
    static DzAppSetup setup(const QString& home)
    {
        DzAppSetup setup;
        setup.contentDirectories << home;
        setup.appDataPath = home;
        setup.settingsFile = home + "/settings.ini";
        setup.openUrls = false;
        return setup;
    }
    DzFigure* addFigure()
    {
        QString why;
        return static_cast<DzFigure*>(addFigureToScene("Genesis8Female", &why));
    }

    QTemporaryDir home; // the content directory, too
    DzApp app;
    DzUndoStack undo;
    DzScene scene;
    std::unique_ptr<PoseBenchWindow> window;
};

} // namespace quillon
