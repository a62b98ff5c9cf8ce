#pragma once

#include <QApplication>

#include <functional>

class RuntimeError;

/// The application object with the top-level handler of run-time errors: an error that no
/// routine caught shows "Run-time error 'N':" with its description and ends the program, as
/// the original did. Before it ends, the flush hook runs, so that an ending by error loses no
/// sample the log chart holds.
class Application : public QApplication
{
public:
    Application(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;

    /// What must reach the disk before the program ends by error; run once, errors ignored.
    static void setFlushBeforeExit(std::function<void()> flush);

    [[noreturn]] static void endByError(const RuntimeError &error);
};
