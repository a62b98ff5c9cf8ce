#pragma once

#include "Fault.h"

#include <QList>
#include <QString>
#include <QtGlobal>

namespace VelquinSim {

/// The instrument that reports its state in "R", "P" and "F" blocks, or the older one whose
/// state shows only in the letter of its UV blocks.
enum class InstrumentKind { Status, Letters };

/// Everything that decides the stream. The same scenario gives the same bytes.
struct Scenario
{
    InstrumentKind kind = InstrumentKind::Status;
    /// Runs to play; 0 repeats without end.
    int runs = 0;
    double runMinutes = 10;
    /// Idle time before each run, and after the last one.
    double idleSeconds = 20;
    int events = 3;
    int labels = 1;
    int pauses = 1;
    double pauseSeconds = 20;
    int holds = 1;
    double holdSeconds = 15;
    /// Pen on before each run and pen off after it (status kind only).
    bool pen = true;
    /// "C" or "D": the letter of the conductivity block.
    char condLetter = 'C';
    /// 1 is real time, larger is faster, 0 as fast as the transport takes it.
    double speed = 1;
    quint64 seed = 1;
    QList<Fault> faults;

    /// Takes the keys of a JSON scenario file (the long option names) over this scenario.
    bool readFile(const QString &path, QString *error);
    /// Checks ranges; on a mistake says why.
    [[nodiscard]] bool validate(QString *error) const;
    [[nodiscard]] QString kindName() const;
};

} // namespace VelquinSim
