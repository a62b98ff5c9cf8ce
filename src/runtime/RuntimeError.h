#pragma once

#include <QString>

#include <exception>
#include <utility>

/// A numbered run-time error: a failing statement raises one, and the number says what failed.
class RuntimeError : public std::exception
{
public:
    explicit RuntimeError(int number);
    RuntimeError(int number, QString description);

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] const QString &description() const { return m_description; }
    [[nodiscard]] const char *what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

namespace ErrorNumber {
constexpr int InvalidProcedureCall = 5;
constexpr int Overflow = 6;
constexpr int OutOfMemory = 7;
constexpr int TypeMismatch = 13;
constexpr int FileNotFound = 53;
constexpr int DeviceIo = 57;
constexpr int DiskFull = 61;
constexpr int PermissionDenied = 70;
constexpr int PathFileAccess = 75;
constexpr int PathNotFound = 76;
constexpr int InvalidPropertyValue = 380;
constexpr int InvalidPortNumber = 8002;
constexpr int PortAlreadyOpen = 8005;
constexpr int PortNotAvailable = 8010;
constexpr int CannotSetCommState = 8015;
constexpr int CancelSelected = 32755;
} // namespace ErrorNumber

/// One line describing a run-time error number; "" for 0.
[[nodiscard]] QString ErrorDescription(int number);

[[noreturn]] void Raise(int number);

/// The last run-time error raised, as the original's Err object kept it; 0 before any.
[[nodiscard]] const RuntimeError &Err();

/// "Errors ignored statement by statement": runs one statement, swallowing a run-time error.
template <typename Statement> void ignoreErrors(Statement &&statement)
{
    try {
        std::forward<Statement>(statement)();
    } catch (const RuntimeError &) {
    }
}

/// A routine "with an error handler": runs the body, answers 0 or the number it raised.
template <typename Body> [[nodiscard]] int trapError(Body &&body)
{
    try {
        std::forward<Body>(body)();
        return 0;
    } catch (const RuntimeError &e) {
        return e.number();
    }
}
