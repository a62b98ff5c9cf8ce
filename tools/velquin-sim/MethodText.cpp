#include "MethodText.h"

#include "RunProgram.h"

#include <QString>

#include <array>

namespace VelquinSim {

namespace {

constexpr std::array<const char *, 4> kMethods = {"IEX_LYSOZYME_03", "IEX_BSA_FRACT_01",
                                                  "QSEP_CLEANUP_02", "IEX_MAB_POLISH_05"};
constexpr std::array<const char *, 3> kColumns = {"Q-Sep FF 5 ml", "S-Sep HP 1 ml",
                                                  "Q-Sep HP 5 ml"};
constexpr double kFlow = 1.0;

QString row(const QString &text)
{
    return text + QStringLiteral("\r\n");
}

} // namespace

QByteArray MethodText::compose(int runNumber, double runMinutes, quint32 variant)
{
    QString text;
    text += row(QStringLiteral("VELQUIN LPC METHOD REPORT"));
    text += row(QStringLiteral("Method:  %1 Column: %2")
                    .arg(QString::fromLatin1(kMethods[variant % kMethods.size()]), -20)
                    .arg(QString::fromLatin1(kColumns[(variant / 7) % kColumns.size()])));
    text += row(QStringLiteral("Run:     %1 Length: %2 min")
                    .arg(runNumber, -20)
                    .arg(runMinutes, 0, 'f', 2));
    text += row(QStringLiteral("Buffer A: 20 mM Tris pH 8.0  Buffer B: A + 1.0 M NaCl"));
    text += row(QString(64, QLatin1Char('-')));
    text += row(QStringLiteral("Step  Time(min)  %B start  %B end  Flow(ml/min)  Valve   Action"));
    const auto steps = RunProgram::steps();
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const ProgramStep &step = steps[i];
        text += row(QStringLiteral("%1  %2  %3  %4  %5  %6  %7")
                        .arg(i + 1, 4)
                        .arg(step.from * runMinutes, 9, 'f', 2)
                        .arg(step.percentBFrom, 8, 'f', 1)
                        .arg(step.percentBTo, 6, 'f', 1)
                        .arg(kFlow, 12, 'f', 2)
                        .arg(QString::fromLatin1(step.valve), -6)
                        .arg(QString::fromLatin1(step.name)));
    }
    text += row(QString(64, QLatin1Char('-')));
    text += row(QStringLiteral("End of method"));
    return text.toLatin1();
}

} // namespace VelquinSim
