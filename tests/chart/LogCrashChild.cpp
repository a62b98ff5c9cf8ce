// The process the crash test kills: a log chart that grows tick by tick, with WriteLog after
// each tick, reporting every acknowledged tick on stdout as one 4-byte number, after a 0 that
// says it is about to start.
#include "RunContent.h"
#include "chart/Quillchart.h"

#include <QApplication>

#include <unistd.h>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc != 2)
        return 2;
    const QString directory = QString::fromLocal8Bit(argv[1]);
    Quillchart chart;
    RunContent::Counts counts;
    const qint32 ready = 0;
    if (::write(STDOUT_FILENO, &ready, sizeof ready) != sizeof ready)
        return 1;
    // Bounded, so that a child whose parent died stops by itself.
    for (qint32 tick = 1; tick <= 5000; ++tick) {
        const RunContent::Counts next = RunContent::afterTicks(tick);
        RunContent::grow(chart, counts, next);
        counts = next;
        // A file of 0.01 hours holds 180 samples: files are created all the time.
        if (chart.WriteLog(directory, 1, 20000, 0.01) == 0 &&
            ::write(STDOUT_FILENO, &tick, sizeof tick) != sizeof tick)
            return 1;
    }
    return 0;
}
