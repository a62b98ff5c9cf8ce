#include "SetupDriver.h"

#include "acquisition/frmSetup.h"

#include <QApplication>

#include <gtest/gtest.h>

SetupDriver::SetupDriver(int deadlineMs) : m_deadlineMs(deadlineMs)
{
    m_poll.setInterval(10);
    QObject::connect(&m_poll, &QTimer::timeout, [this] { look(); });
    m_poll.start();
}

SetupDriver::~SetupDriver() = default;

void SetupDriver::look()
{
    auto *form = qobject_cast<frmSetup *>(QApplication::activeModalWidget());
    if (form == nullptr || !form->isVisible() || form == m_current)
        return;
    m_current = form;
    ++m_showings;
    QPointer<frmSetup> guarded(form);
    QTimer::singleShot(m_deadlineMs, form, [guarded] {
        if (guarded && guarded->isVisible()) {
            ADD_FAILURE() << "the setup form was still up at the deadline";
            guarded->done(QDialog::Rejected);
        }
    });
    if (!m_answer) {
        ADD_FAILURE() << "the setup form came up unasked";
        form->done(QDialog::Rejected);
        return;
    }
    std::exchange(m_answer, Answer())(*form);
}
