#include "host/driver/scan_report.h"

#include <QRegularExpression>

namespace quillon {

QList<PhaseCount> countPhases(const QList<ProgressEntry>& log, qint64 endMs)
{
    static const QRegularExpression kInfo("^(.+)\\.\\.\\. *(\\d+)(?: of *(\\d+))?$");
    QList<PhaseCount> phases;
    qint64 beginMs = 0;
    QString lastInfo;
    for (const ProgressEntry& entry : log) {
        const QRegularExpressionMatch info = kInfo.match(entry.record.info);
        if (!info.hasMatch() || entry.record.info == lastInfo)
            continue;
        lastInfo = entry.record.info;
        if (phases.isEmpty() || phases.last().name != info.captured(1)) {
            if (!phases.isEmpty())
                phases.last().seconds = double(entry.ms - beginMs) / 1000;
            beginMs = entry.ms;
            phases.append({info.captured(1), 0, 0, 0});
        }
        const bool hasTotal = !info.captured(3).isEmpty();
        phases.last().in = info.captured(hasTotal ? 3 : 2).toInt();
        ++phases.last().shown;
    }
    if (!phases.isEmpty())
        phases.last().seconds = double(endMs - beginMs) / 1000;
    return phases;
}

QStringList phaseTable(const QList<PhaseCount>& phases, int left)
{
    QStringList lines(QString("%1 %2 %3 %4 %5")
                          .arg("phase", -28)
                          .arg("in", 7)
                          .arg("told", 7)
                          .arg("out", 7)
                          .arg("seconds", 9));
    for (int i = 0; i < phases.size(); ++i) {
        const PhaseCount& phase = phases.at(i);
        const int out = i + 1 < phases.size() ? phases.at(i + 1).in : left;
        lines += QString("%1 %2 %3 %4 %5")
                     .arg(phase.name, -28)
                     .arg(phase.in, 7)
                     .arg(phase.shown, 7)
                     .arg(out, 7)
                     .arg(phase.seconds, 9, 'f', 3);
    }
    return lines;
}

} // namespace quillon
