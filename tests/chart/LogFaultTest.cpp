#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/LogReader.h"
#include "chart/LogWriter.h"
#include "chart/PosixLogIo.h"
#include "chart/RunData.h"

#include <QTemporaryDir>

#include <cerrno>
#include <gtest/gtest.h>
#include <map>
#include <unistd.h>

namespace {

enum class Op { Create, Truncate, Write, Sync, SyncDirectory };

/// The file system, with one kind of call failing while `failing` is set. A failed write stops
/// half way, as on a full disk; a failed sync loses what it should have kept, as the page cache
/// may after an I/O error.
class FaultyIo : public LogIo
{
public:
    FaultyIo(Op op, int error) : m_op(op), m_error(error) {}

    bool failing = false;

    int create(const QString &path, int &handle) override
    {
        if (fails(Op::Create))
            return m_error;
        const int result = m_real.create(path, handle);
        m_synced[handle] = 0;
        return result;
    }
    int writeAt(int handle, qint64 offset, QByteArrayView bytes) override
    {
        if (fails(Op::Write)) {
            (void)m_real.writeAt(handle, offset, bytes.first(bytes.size() / 2));
            return m_error;
        }
        return m_real.writeAt(handle, offset, bytes);
    }
    int truncate(int handle, qint64 size) override
    {
        return fails(Op::Truncate) ? m_error : m_real.truncate(handle, size);
    }
    int sync(int handle) override
    {
        if (fails(Op::Sync)) {
            (void)m_real.truncate(handle, m_synced[handle]);
            return m_error;
        }
        const int result = m_real.sync(handle);
        m_synced[handle] = ::lseek(handle, 0, SEEK_END);
        return result;
    }
    int syncDirectory(const QString &directory) override
    {
        return fails(Op::SyncDirectory) ? m_error : m_real.syncDirectory(directory);
    }
    void close(int handle) override { m_real.close(handle); }

private:
    bool fails(Op op) const { return failing && op == m_op; }

    PosixLogIo m_real;
    Op m_op;
    int m_error;
    std::map<int, qint64> m_synced;
};

struct Fault
{
    const char *name;
    Op op;
    int error;
    int expected;
};

using LogFault = ::testing::TestWithParam<Fault>;

} // namespace

TEST_P(LogFault, NothingIsLostOnceTheNextWriteSucceeds)
{
    const Fault &fault = GetParam();
    QTemporaryDir dir(testHome() + QStringLiteral("/fault-XXXXXX"));
    auto io = std::make_unique<FaultyIo>(fault.op, fault.error);
    FaultyIo &faulty = *io;
    LogWriter writer(std::move(io));
    RunData live;
    RunContent::Counts counts;
    int failedWrites = 0;
    for (int tick = 0; tick < 16; ++tick) {
        const RunContent::Counts next{counts.samples + 100, counts.marks + 1,
                                      counts.methodTexts + (tick % 4 == 0 ? 1 : 0)};
        RunContent::grow(live, counts, next);
        counts = next;
        // The fault lasts four ticks and covers the start of the second and third files.
        faulty.failing = tick >= 3 && tick < 7;
        const int status = writer.write(dir.path(), live.store, live.annotations, 0.02);
        EXPECT_TRUE(status == 0 || status == fault.expected) << tick << ": " << status;
        EXPECT_TRUE(faulty.failing || status == 0) << tick;
        failedWrites += status != 0;
    }
    EXPECT_GT(failedWrites, 0);
    RunData run;
    ASSERT_EQ(LogReader::read(dir.path(), run), LogReader::Status::Good);
    EXPECT_EQ(RunContent::differences(run, counts), QString());
}

INSTANTIATE_TEST_SUITE_P(Faults, LogFault,
                         ::testing::Values(Fault{"DiskFullMidWrite", Op::Write, ENOSPC, 61},
                                           Fault{"WriteIoError", Op::Write, EIO, 57},
                                           Fault{"SyncFails", Op::Sync, EIO, 57},
                                           Fault{"DirectorySyncFails", Op::SyncDirectory, EIO, 57},
                                           Fault{"FileCannotBeCreated", Op::Create, ENOSPC, 61},
                                           Fault{"TruncateFails", Op::Truncate, EIO, 57}),
                         [](const auto &info) { return std::string(info.param.name); });
