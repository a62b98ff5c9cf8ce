#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/LogIo.h"
#include "chart/LogReader.h"
#include "chart/LogWriter.h"
#include "chart/RunData.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>
#include <gtest/gtest.h>

namespace {

struct Op
{
    enum Kind { Create, Write, Truncate, Sync, SyncDirectory } kind;
    int file = -1;
    qint64 offset = 0;
    QByteArray bytes;
};

/// Keeps the log writer's file operations instead of doing them, one kind failing with `error`
/// while `failing` is set: a failed write stops half way, as on a full disk; a failed sync,
/// truncation or directory sync keeps nothing; a failed creation makes no file.
class RecordingIo : public LogIo
{
public:
    RecordingIo(Op::Kind failingKind, int error) : m_failingKind(failingKind), m_error(error) {}

    std::vector<Op> ops;
    QStringList names;
    bool failing = false;

    int create(const QString &path, int &handle) override
    {
        if (fails(Op::Create))
            return m_error;
        handle = int(names.size());
        names << QFileInfo(path).fileName();
        ops.push_back({Op::Create, handle, 0, {}});
        return 0;
    }
    int writeAt(int handle, qint64 offset, QByteArrayView bytes) override
    {
        const bool failed = fails(Op::Write);
        ops.push_back({Op::Write, handle, offset,
                       (failed ? bytes.first(bytes.size() / 2) : bytes).toByteArray()});
        return failed ? m_error : 0;
    }
    int truncate(int handle, qint64 size) override { return record(Op::Truncate, handle, size); }
    int sync(int handle) override { return record(Op::Sync, handle); }
    int syncDirectory(const QString &) override { return record(Op::SyncDirectory); }
    void close(int) override {}

private:
    bool fails(Op::Kind kind) const { return failing && kind == m_failingKind; }
    int record(Op::Kind kind, int file = -1, qint64 offset = 0)
    {
        if (fails(kind))
            return m_error;
        ops.push_back({kind, file, offset, {}});
        return 0;
    }

    Op::Kind m_failingKind;
    int m_error;
};

void apply(QByteArray &file, const Op &op, qsizetype keep)
{
    if (op.kind == Op::Truncate) {
        file.resize(op.offset, '\0');
    } else if (op.kind == Op::Write) {
        if (file.size() < op.offset + keep)
            file.resize(op.offset + keep, '\0');
        file.replace(op.offset, keep, op.bytes.first(keep));
    }
}

/// One call of the writer: the operations it had made when it returned, and whether it
/// acknowledged the content.
struct Call
{
    std::size_t opsAfter;
    RunContent::Counts counts;
    bool acknowledged;
};

/// Every state a power cut after `done` operations can leave: each file as its last sync left
/// it, then its later writes and truncations lost, applied in order up to one torn at any byte
/// or landed as zeros, or applied in reverse order; a file whose directory entry was not synced
/// since it was made may be gone.
class PowerCut
{
public:
    PowerCut(const RecordingIo &io, std::size_t done) : m_io(io), m_done(done) {}

    template <typename Check> void forEachState(Check &&check)
    {
        const int files = int(m_io.names.size());
        const auto count = std::size_t(files);
        std::vector<QByteArray> durable(count);
        std::vector<std::vector<Op>> pending(count);
        std::vector<bool> made(count);
        std::vector<bool> entryDurable(count);
        for (std::size_t i = 0; i < m_done; ++i) {
            const Op &op = m_io.ops[i];
            if (op.kind == Op::SyncDirectory) {
                for (int f = 0; f < files; ++f)
                    entryDurable[std::size_t(f)] = made[std::size_t(f)];
                continue;
            }
            const auto f = std::size_t(op.file);
            if (op.kind == Op::Create) {
                made[f] = true;
            } else if (op.kind == Op::Sync) {
                for (const Op &held : pending[f])
                    apply(durable[f], held, held.bytes.size());
                pending[f].clear();
            } else {
                pending[f].push_back(op);
            }
        }
        for (int f = 0; f < files; ++f) {
            const auto i = std::size_t(f);
            const auto state = [&](const QByteArray *content) {
                std::vector<const QByteArray *> disk(count);
                for (int g = 0; g < files; ++g)
                    disk[std::size_t(g)] =
                        made[std::size_t(g)] ? &durable[std::size_t(g)] : nullptr;
                disk[i] = content;
                check(disk);
            };
            if (!made[i])
                continue;
            if (!entryDurable[i])
                state(nullptr);
            state(&durable[i]);
            QByteArray reversed = durable[i];
            for (auto op = pending[i].rbegin(); op != pending[i].rend(); ++op)
                apply(reversed, *op, op->bytes.size());
            state(&reversed);
            QByteArray prefix = durable[i];
            for (const Op &op : pending[i]) {
                for (qsizetype keep = 0; keep <= op.bytes.size(); ++keep) {
                    QByteArray torn = prefix;
                    apply(torn, op, keep);
                    state(&torn);
                }
                // The file grew, but the blocks of the write never landed.
                QByteArray unwritten = prefix;
                apply(unwritten, Op{op.kind, op.file, op.offset, QByteArray(op.bytes.size(), 0)},
                      op.bytes.size());
                state(&unwritten);
                apply(prefix, op, op.bytes.size());
            }
        }
    }

private:
    const RecordingIo &m_io;
    std::size_t m_done;
};

QString scratchRoot()
{
    const QFileInfo shm(QStringLiteral("/dev/shm"));
    return shm.isDir() && shm.isWritable() ? shm.filePath() : testHome();
}

struct Fault
{
    const char *name;
    Op::Kind kind;
    int error;
    int expected;
};

using LogPowerCut = ::testing::TestWithParam<Fault>;

} // namespace

TEST_P(LogPowerCut, EveryStateACutCanLeaveGivesBackEveryAcknowledgedWriteAndNothingElse)
{
    // Ticks that grow the log over three or more data files; the fault lasts four ticks and
    // covers the start of the second file, and each later tick writes again what it missed.
    const Fault &fault = GetParam();
    auto *io = new RecordingIo(fault.kind, fault.error);
    LogWriter writer{std::unique_ptr<LogIo>(io)};
    RunData logged;
    RunContent::Counts counts;
    std::vector<Call> calls;
    for (int tick = 0; tick < 14; ++tick) {
        const RunContent::Counts next{counts.samples + 40 + tick, counts.marks + tick % 2,
                                      counts.methodTexts + (tick % 4 == 0 ? 1 : 0)};
        RunContent::grow(logged, counts, next);
        counts = next;
        io->failing = tick >= 3 && tick < 7;
        // 0.01 hours are 180 samples a file.
        const int status = writer.write("/log", logged.store, logged.annotations, 0.01);
        // Creation and the directory's sync fail only on a tick that starts a file.
        ASSERT_TRUE(status == 0 || (io->failing && status == fault.expected)) << tick;
        calls.push_back({io->ops.size(), counts, status == 0});
    }
    ASSERT_GE(io->names.size(), 3u);
    ASSERT_TRUE(
        std::any_of(calls.begin(), calls.end(), [](const Call &c) { return !c.acknowledged; }));

    QTemporaryDir root(scratchRoot() + QStringLiteral("/ostrel-cut-XXXXXX"));
    const QDir dir(root.path());
    int states = 0;
    for (std::size_t done = 0; done <= io->ops.size(); ++done) {
        // What was acknowledged before the cut, and what any call begun since may have left.
        RunContent::Counts acknowledged;
        std::vector<RunContent::Counts> possible{RunContent::Counts{}};
        std::size_t begun = 0;
        for (const Call &call : calls) {
            if (begun >= done)
                break;
            if (call.opsAfter <= done && call.acknowledged) {
                acknowledged = call.counts;
                possible.assign(1, call.counts);
            } else {
                possible.push_back(call.counts);
            }
            begun = call.opsAfter;
        }
        PowerCut(*io, done).forEachState([&](const std::vector<const QByteArray *> &disk) {
            ++states;
            for (qsizetype f = 0; f < io->names.size(); ++f) {
                QFile file(dir.filePath(io->names[f]));
                if (disk[std::size_t(f)] == nullptr) {
                    file.remove();
                } else {
                    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
                    file.write(*disk[std::size_t(f)]);
                }
            }
            RunData run;
            const LogReader::Status status = LogReader::read(dir.path(), run);
            const bool some = std::any_of(possible.begin(), possible.end(), [&](const auto &c) {
                return c.samples >= acknowledged.samples &&
                       RunContent::differences(run, c).isEmpty();
            });
            ASSERT_TRUE(status == LogReader::Status::Good ||
                        (status == LogReader::Status::NoLog && acknowledged.samples == 0))
                << "cut after " << done << " operations, state " << states;
            ASSERT_TRUE(some) << "cut after " << done << " operations, state " << states << ": "
                              << RunContent::differences(run, acknowledged).toStdString();
        });
    }
    EXPECT_GE(states, 1000);
    RecordProperty("states", states);
}

INSTANTIATE_TEST_SUITE_P(Faults, LogPowerCut,
                         ::testing::Values(Fault{"DiskFullMidWrite", Op::Write, ENOSPC, 61},
                                           Fault{"WriteIoError", Op::Write, EIO, 57},
                                           Fault{"SyncFails", Op::Sync, EIO, 57},
                                           Fault{"DirectorySyncFails", Op::SyncDirectory, EIO, 57},
                                           Fault{"FileCannotBeCreated", Op::Create, ENOSPC, 61},
                                           Fault{"TruncateFails", Op::Truncate, EACCES, 70}),
                         [](const auto &info) { return std::string(info.param.name); });
