#pragma once

#include "runtime/ErrorRoute.h"

#include <QList>

/// The error route as the codes that reached it, in order.
class ErrorCodes : public ErrorRoute
{
public:
    void HandelError(qint32 ErrorCode) override { codes.append(ErrorCode); }

    QList<qint32> codes;
};
