#include "ExportInput.h"

#include "chart/Quillchart.h"
#include "chart/RunFileReader.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Identity
{
    dev_t device;
    ino_t inode;

    friend bool operator==(const Identity &, const Identity &) = default;
};

std::optional<Identity> identityOf(const QString &path)
{
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return Identity{status.st_dev, status.st_ino};
}

std::optional<Identity> standardOutput()
{
    struct stat status
    {
    };
    if (::fstat(STDOUT_FILENO, &status) != 0)
        return std::nullopt;
    return Identity{status.st_dev, status.st_ino};
}

} // namespace

std::optional<RunData> ExportInput::read(const QString &input, QString &error)
{
    QString fileName = input;
    QTemporaryDir scratch;
    if (QFileInfo(input).isDir()) {
        Quillchart chart;
        if (!chart.CheckLogFile(input)) {
            error = QStringLiteral("%1 holds no usable log").arg(input);
            return std::nullopt;
        }
        fileName = scratch.filePath(QStringLiteral("recovered.chl"));
        if (chart.SaveLogAs(input, 0, fileName) != 0) {
            error = QStringLiteral("the log in %1 is damaged").arg(input);
            return std::nullopt;
        }
    }
    RunFileReader::Failure failure = RunFileReader::Failure::None;
    auto run = RunFileReader::read(fileName, &failure);
    if (!run)
        error = QStringLiteral("cannot read %1: %2").arg(input, RunFileReader::describe(failure));
    return run;
}

bool ExportInput::isWrittenOver(const QString &input, const QString &output)
{
    const auto read = identityOf(input);
    if (!read)
        return false;
    const bool toStandardOutput = output.isEmpty() || output == QLatin1String("-");
    if ((toStandardOutput ? standardOutput() : identityOf(output)) == read)
        return true;
    return !toStandardOutput && QFileInfo(input).isDir() &&
           identityOf(QFileInfo(output).absolutePath()) == read;
}
