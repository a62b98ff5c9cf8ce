#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

namespace VelquinSim {

enum class FaultKind { MidBlock, Garbage, UnknownType, WrongParameter, Chance96, Silence, Burst };

/// One fault to inject, at a time in seconds from the start of the stream.
struct Fault
{
    FaultKind kind = FaultKind::Garbage;
    double at = 0;
    /// Bytes cut off the first block (MidBlock), junk bytes (Garbage), extra pairs (Burst).
    int count = 0;
    /// Length of the silence.
    double seconds = 0;
    /// The type byte of the unknown block, or the letter of the block with a wrong parameter.
    quint8 type = 0;
    /// The wrong parameter byte.
    quint8 value = 0;

    /// The option text that gives this fault back, e.g. "garbage@30:8".
    [[nodiscard]] QString optionText() const;
    /// Reads "name[@seconds][:arg[:arg]]"; on a mistake returns nothing and says why.
    static std::optional<Fault> parse(const QString &text, QString *error);
};

} // namespace VelquinSim
