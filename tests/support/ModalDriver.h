#pragma once

#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>

/// Answers the next dialog that comes up modally, by acting on its widgets as an operator
/// would. A dialog that comes up with nobody to answer it, or that stays up past the deadline,
/// is closed and counted as a test failure, so a test never hangs on it.
class ModalDriver
{
public:
    using Answer = std::function<void(QDialog &)>;

    explicit ModalDriver(int deadlineMs = 5000);
    ModalDriver(const ModalDriver &) = delete;
    ModalDriver &operator=(const ModalDriver &) = delete;

    /// Queues the answer to a showing, first queued first used; a showing with no answer left
    /// fails the test.
    void answerWith(Answer answer) { m_answers.push_back(std::move(answer)); }
    /// The same for a dialog of type `T`; another type fails the test.
    template <typename T> void answerWith(std::function<void(T &)> answer)
    {
        answerWith([answer = std::move(answer)](QDialog &dialog) {
            T *typed = qobject_cast<T *>(&dialog);
            if (typed == nullptr)
                return unexpected(dialog);
            answer(*typed);
        });
    }
    /// Shows `window` and lets its first activation run, answering its dialogs; false when
    /// the dialogs queued were not all shown or one is still up.
    [[nodiscard]] bool activate(QWidget &window);
    [[nodiscard]] int showings() const { return m_showings; }

private:
    void look();
    static void unexpected(QDialog &dialog);

    QTimer m_poll;
    int m_deadlineMs;
    int m_showings = 0;
    QPointer<QDialog> m_current;
    std::deque<Answer> m_answers;
};
