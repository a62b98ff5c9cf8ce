#pragma once

#include "chart/ChartAnnotations.h"
#include "chart/SampleStore.h"

#include <QString>

#include <optional>

class Quillchart;
struct RunData;

/// Deterministic run content: sample, mark and method text n depend on n alone.
namespace RunContent {
SamplePair sample(qint64 n);
EventMark mark(qint64 n);
MethodText methodText(qint64 n);

struct Counts
{
    qint64 samples = 0;
    qint64 marks = 0;
    qint64 methodTexts = 0;
};

/// Adds the samples, marks and method texts numbered from `from` up to `to`.
void grow(Quillchart &chart, Counts from, Counts to);
void grow(RunData &run, Counts from, Counts to);

/// Compares a run with the content numbered below `counts`, samples bit for bit: an empty
/// string when they agree, else what differs first. The content numbered from `lostFrom` up
/// to `lostTo` must be missing: samples without a number, marks and method texts absent.
QString differences(const RunData &run, Counts counts, Counts lostFrom = {}, Counts lostTo = {});

std::optional<RunData> readRunFile(const QString &fileName);
/// The bytes of a file, none when it cannot be read.
QByteArray bytesOf(const QString &fileName);
} // namespace RunContent
