// The converter built without the netCDF library: --aia is refused with this reason.
#include "AiaWriter.h"

QString AiaWriter::missing()
{
    return QStringLiteral("this ostrel-export was built without the netCDF library (Debian "
                          "package libnetcdf-dev), so --aia is not available");
}

bool AiaWriter::write(const RunData &, const Header &, const QString &, QString &error)
{
    error = missing();
    return false;
}
