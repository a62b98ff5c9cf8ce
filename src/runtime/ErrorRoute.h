#pragma once

#include <QtGlobal>

/// The one error route: every failure of the link reaches it as a number.
class ErrorRoute
{
public:
    virtual ~ErrorRoute() = default;
    virtual void HandelError(qint32 ErrorCode) = 0;
};
