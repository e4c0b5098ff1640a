// frame_fixture.h - what tests of the plug-in's frame share: a folder of their own, files as bytes,
// a host with a window, answers to modal boxes, and a record of the host calls made.
#pragma once

#include "dzapp.h"
#include "dzhostcalls.h"
#include "dzmainwindow.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStringList>

#include <memory>

// A new empty folder, gone with everything in it at the end.
class TempFolder {
public:
    TempFolder()
    {
        static int made = 0;
        m_path = QString::fromLatin1("%1/quillon_test_%2_%3")
                     .arg(QDir::tempPath())
                     .arg(QCoreApplication::applicationPid())
                     .arg(++made);
        removeAll(m_path);
        QDir().mkpath(m_path);
    }
    ~TempFolder()
    {
        removeAll(m_path);
    }
    QString path(const QString& below = QString()) const
    {
        return below.isEmpty() ? m_path : m_path + QLatin1Char('/') + below;
    }

private:
    Q_DISABLE_COPY(TempFolder)
    static void removeAll(const QString& path)
    {
        const QFileInfoList entries = QDir(path).entryInfoList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        for (int i = 0; i < entries.size(); ++i) {
            const QFileInfo& entry = entries.at(i);
            if (entry.isDir() && !entry.isSymLink())
                removeAll(entry.filePath());
            else
                QFile::remove(entry.filePath());
        }
        QDir().rmdir(path);
    }
    QString m_path;
};

inline QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void writeFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(path.section(QLatin1Char('/'), 0, -2));
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

inline QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

// An application below one folder: "data", "temp", "docs" and "settings.ini" in it.
struct HostFixture {
    TempFolder home;
    DzApp app;
    DzMainWindow window;

    HostFixture()
        : app(setupBelow(home.path()))
    {
        QDir().mkpath(home.path(QLatin1String("temp")));
    }
    QString dataFolder() const
    {
        return home.path(QLatin1String("data/Brannoc/Quillon/"));
    }

private:
    static DzAppSetup setupBelow(const QString& home)
    {
        DzAppSetup setup;
        setup.dataFolderPath = home + QLatin1String("/data");
        setup.tempPath = home + QLatin1String("/temp");
        setup.documentationPath = home + QLatin1String("/docs");
        setup.settingsFile = home + QLatin1String("/settings.ini");
        setup.openUrls = false;
        return setup;
    }
};

struct SeenBox {
    QString title;
    QString text;
    QMessageBox::Icon icon;
    bool hasPixmap;
    QMessageBox::StandardButtons buttons;
    QWidget* parent; // may have gone since
    bool isModal;
};

// While it lives, every message box is noted and then answered with the given button.
class BoxAnswers : public QObject {
public:
    explicit BoxAnswers(QMessageBox::StandardButton answer = QMessageBox::Ok)
        : m_answer(answer)
    {
        qApp->installEventFilter(this);
    }
    QList<SeenBox> boxes;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        QMessageBox* box = qobject_cast<QMessageBox*>(watched);
        if (box && event->type() == QEvent::Show) {
            const SeenBox seen
                = {box->windowTitle(), box->text(), box->icon(), box->iconPixmap().width() > 0,
                    box->standardButtons(), box->parentWidget(), box->isModal()};
            boxes.append(seen);
            // A box without buttons of its own gets an Ok when it shows, which is just happening.
            QAbstractButton* button = box->button(m_answer);
            QMetaObject::invokeMethod(button ? static_cast<QObject*>(button) : box,
                button ? "click" : "accept", Qt::QueuedConnection);
        }
        return false;
    }

private:
    QMessageBox::StandardButton m_answer;
};

// While it lives, the names of all host calls made, in order.
class HostCallLog {
public:
    HostCallLog()
    {
        names().clear();
        dzHostCallHook = note;
    }
    ~HostCallLog()
    {
        dzHostCallHook = nullptr;
    }
    static QStringList& names()
    {
        static QStringList list;
        return list;
    }

private:
    static bool note(const char* name, const void*)
    {
        names().append(QLatin1String(name));
        return false;
    }
};
