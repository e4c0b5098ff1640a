#include "catalogue/picture_crew.h"

#include "catalogue/picture_worker.h"

#include <QEventLoop>
#include <QProcess>
#include <QVariant>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace quillon {
namespace {

const int kStartMs = 30000;

class Crew {
public:
    Crew(const QString& program, std::vector<PictureJob> jobs, const std::function<void()>& done)
        : m_program(program)
        , m_jobs(std::move(jobs))
        , m_done(done)
    {
        std::stable_sort(m_jobs.begin(), m_jobs.end(),
            [](const PictureJob& a, const PictureJob& b) { return a.male < b.male; });
    }
    bool run(int workers, QString* why)
    {
        m_workers.resize(std::min(size_t(workers), m_jobs.size()));
        for (std::unique_ptr<QProcess>& worker : m_workers)
            hire(&worker);
        if (isAtWork())
            m_loop.exec();
        *why = m_why;
        return m_why.isEmpty();
    }

private:
    bool isAtWork() const
    {
        return std::any_of(m_workers.begin(), m_workers.end(),
            [](const std::unique_ptr<QProcess>& each) { return each != nullptr; });
    }
    // What the picture library has to say of a damaged picture is left out: it is done without.
    static void passOn(QProcess* worker)
    {
        worker->setReadChannel(QProcess::StandardError);
        while (worker->canReadLine()) {
            const QByteArray line = worker->readLine();
            if (!line.startsWith("libpng "))
                std::fputs(line.constData(), stderr);
        }
        worker->setReadChannel(QProcess::StandardOutput);
    }
    // In place of one that is gone.
    void hire(std::unique_ptr<QProcess>* place)
    {
        QProcess* worker = new QProcess;
        place->reset(worker);
        QObject::connect(
            worker, &QProcess::readyReadStandardError, worker, [worker] { passOn(worker); });
        QObject::connect(worker, &QProcess::readyReadStandardOutput, worker,
            [this, worker] { answered(worker); });
        QObject::connect(worker, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
            worker, [this, place] { left(place); });
        worker->start(m_program, {"--worker"});
        if (worker->waitForStarted(kStartMs))
            return handOut(worker);
        m_why = QString("%1: %2").arg(m_program, worker->errorString());
        place->release()->deleteLater();
        endIfIdle();
    }
    void handOut(QProcess* worker)
    {
        if (m_next == m_jobs.size())
            return worker->closeWriteChannel();
        worker->write(jobLine(m_jobs[m_next++]) + '\n');
        worker->setProperty("hasJob", true);
    }
    void answered(QProcess* worker)
    {
        while (worker->canReadLine()) {
            worker->readLine();
            worker->setProperty("hasJob", false);
            m_done();
            handOut(worker);
        }
    }
    void left(std::unique_ptr<QProcess>* place)
    {
        const bool died = (*place)->property("hasJob").toBool();
        place->release()->deleteLater(); // called from within it
        if (died)
            m_done();
        if (died && m_next < m_jobs.size())
            return hire(place);
        endIfIdle();
    }
    void endIfIdle()
    {
        if (!isAtWork())
            m_loop.quit();
    }

    const QString m_program;
    std::vector<PictureJob> m_jobs;
    const std::function<void()>& m_done;
    std::vector<std::unique_ptr<QProcess>> m_workers; // null: has left; never grows
    size_t m_next = 0;
    QString m_why;
    QEventLoop m_loop;
};

} // namespace

bool makePictures(const QString& program, int workers, const std::vector<PictureJob>& jobs,
    const std::function<void()>& done, QString* why)
{
    return Crew(program, jobs, done).run(std::max(1, workers), why);
}

} // namespace quillon
