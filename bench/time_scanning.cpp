// time_scanning [--quick] - what a scan does itself: telling from a file's bytes what it holds,
// their hash, the phases that work on the index, telling the progress window, and posing the
// figure for a signature. Bytes come from memory, as the host unpacks them.
//
// Rows are those of common_row.h. n is bytes for the texts, else presets of 164 KB. References are
// the literal forms of tests/reference/; where the whole would take minutes they are timed on the
// first of the presets and multiplied. Checksums of both must be the same.
// --quick: small sizes once; says only whether the checksums are the same.
#include "bench/posed_figure.h"
#include "bench/scanning_rows.h"

#include <QCoreApplication>

#include <cstring>

using namespace quillon;

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    scanning::setQuick(argc > 1 && std::strcmp(argv[argc - 1], "--quick") == 0);
    PosedFigure posed("Genesis8Male");
    if (!scanning::isQuick())
        printHeader();
    scanning::timeTexts(posed.figure);
    scanning::timePhases(posed.figure);
    scanning::timeTelling();
    scanning::timePassBegins();
    scanning::timeWalk();
    scanning::timePoses(posed.figure);
    if (scanning::isQuick())
        std::printf("%s\n",
            scanning::areSame() ? "all checksums are those of the literal forms"
                                : "CHECKSUMS DIFFER");
    return scanning::areSame() ? 0 : 1;
}
