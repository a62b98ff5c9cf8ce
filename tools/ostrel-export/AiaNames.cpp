// The parts of the AIA export that need no netCDF, so that every build names the same files.
#include "AiaWriter.h"

QStringList AiaWriter::fileNames(const QString &prefix)
{
    return {prefix + QStringLiteral("-uv.cdf"), prefix + QStringLiteral("-conductivity.cdf")};
}

QString AiaWriter::stamp(const QDateTime &time)
{
    const int offset = time.offsetFromUtc() / 60;
    const int size = offset < 0 ? -offset : offset;
    return time.toString(QStringLiteral("yyyyMMddHHmmss")) +
           QStringLiteral("%1%2%3")
               .arg(offset < 0 ? QLatin1Char('-') : QLatin1Char('+'))
               .arg(size / 60, 2, 10, QLatin1Char('0'))
               .arg(size % 60, 2, 10, QLatin1Char('0'));
}
