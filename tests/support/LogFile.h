#pragma once

#include "chart/RunData.h"
#include "chart/RunFileCodec.h"

#include <QFile>

#include <optional>

/// The run a saved log file holds; nothing when it cannot be read as a log.
inline std::optional<RunData> readLogFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return RunFileCodec::decode(file.readAll(), RunFileCodec::Kind::Log);
}

/// The pairs a saved log file holds, -1 when it cannot be read.
inline qint64 pairsInLogFile(const QString &path)
{
    const auto run = readLogFile(path);
    return run ? run->store.count() : -1;
}
