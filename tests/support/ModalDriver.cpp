#include "ModalDriver.h"

#include "Pty.h"

#include <QApplication>

#include <gtest/gtest.h>

ModalDriver::ModalDriver(int deadlineMs) : m_deadlineMs(deadlineMs)
{
    m_poll.setInterval(10);
    QObject::connect(&m_poll, &QTimer::timeout, [this] { look(); });
    m_poll.start();
}

void ModalDriver::unexpected(QDialog &dialog)
{
    ADD_FAILURE() << "unexpected dialog " << dialog.metaObject()->className() << " \""
                  << dialog.windowTitle().toStdString() << "\"";
    dialog.done(QDialog::Rejected);
}

void ModalDriver::look()
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible() || dialog == m_current)
        return;
    m_current = dialog;
    ++m_showings;
    QPointer<QDialog> guarded(dialog);
    QTimer::singleShot(m_deadlineMs, dialog, [guarded] {
        if (guarded && guarded->isVisible()) {
            ADD_FAILURE() << "the dialog was still up at the deadline";
            guarded->done(QDialog::Rejected);
        }
    });
    if (m_answers.empty())
        return unexpected(*dialog);
    const Answer answer = std::move(m_answers.front());
    m_answers.pop_front();
    answer(*dialog);
}

bool ModalDriver::activate(QWidget &window)
{
    window.show();
    return waitFor(
        [&] { return m_answers.empty() && QApplication::activeModalWidget() == nullptr; },
        m_deadlineMs);
}
