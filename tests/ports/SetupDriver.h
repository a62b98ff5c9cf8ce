#pragma once

#include <QPointer>
#include <QTimer>

#include <functional>

class frmSetup;

/// Answers the setup form when it comes up modally, by acting on its widgets as an operator
/// would. A form that comes up with nobody to answer it, or that stays up past the deadline, is
/// closed and counted as a test failure, so a test never hangs on it.
class SetupDriver
{
public:
    using Answer = std::function<void(frmSetup &)>;

    explicit SetupDriver(int deadlineMs = 5000);
    ~SetupDriver();
    SetupDriver(const SetupDriver &) = delete;
    SetupDriver &operator=(const SetupDriver &) = delete;

    /// The answer to the next showing; without one a showing fails the test.
    void answerWith(Answer answer) { m_answer = std::move(answer); }
    [[nodiscard]] int showings() const { return m_showings; }

private:
    void look();

    QTimer m_poll;
    int m_deadlineMs;
    int m_showings = 0;
    QPointer<frmSetup> m_current;
    Answer m_answer;
};
