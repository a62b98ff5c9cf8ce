#pragma once

#include "Pty.h"
#include "chart/Quillchart.h"
#include "ScriptedDialogs.h"
#include "view/frmMain.h"

#include <QLocale>

#include <gtest/gtest.h>
#include <memory>

/// The real main window, offscreen, on COM 1 = a pseudo-terminal, with scripted boxes.
class WindowFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        qputenv("OSTREL_COMPORTS", pty.slavePath().toLocal8Bit());
        window = std::make_unique<frmMain>();
        window->show();
        dialogs.boxes.clear();
        dialogs.beeps = 0;
    }
    void TearDown() override
    {
        window.reset();
        qputenv("OSTREL_COMPORTS", "");
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    /// Minutes of data on the recorder chart, 300 pairs a minute.
    void recordMinutes(double minutes)
    {
        const int pairs = int(minutes * 300 + 0.5);
        for (int i = 0; i < pairs; ++i)
            window->Chart[0]->AddSample(0.1f, 20.0f);
    }

    Pty pty;
    ScriptedDialogs dialogs;
    std::unique_ptr<frmMain> window;
};
