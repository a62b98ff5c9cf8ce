#pragma once

#include "acquisition/DecoderHost.h"
#include "acquisition/InstrumentNews.h"
#include "acquisition/RecordCommands.h"
#include "acquisition/SessionHost.h"
#include "runtime/ErrorRoute.h"

#include <QList>
#include <QStringList>

#include <functional>

/// Fakes of the program's small interfaces: each records what reaches it, in order, as text
/// where the order across interfaces matters.

/// The error route: every code, with whatever the test wants noted at that moment.
class RecordedErrors : public ErrorRoute
{
public:
    void HandelError(qint32 ErrorCode) override
    {
        codes.append(ErrorCode);
        if (onError)
            onError(ErrorCode);
    }

    QList<qint32> codes;
    std::function<void(qint32)> onError;
};

/// The decoder's news as lines: "U 0.5", "C 3", "E 2", "M text".
class RecordedNews : public InstrumentNews
{
public:
    void uvSample(quint8 type, float value) override { add(QChar(type), value); }
    void condSample(float value) override { add(QLatin1Char('C'), value); }
    void eventNews(quint8 value) override { add(QLatin1Char('E'), value); }
    void holdNews(quint8 value) override { add(QLatin1Char('H'), value); }
    void runStatusNews(quint8 value) override { add(QLatin1Char('R'), value); }
    void penStatusNews(quint8 value) override { add(QLatin1Char('P'), value); }
    void methodText(const QString &text) override { lines << QStringLiteral("M ") + text; }

    QStringList lines;
    std::function<void()> onNews;

private:
    void add(QChar type, double value)
    {
        lines << QStringLiteral("%1 %2").arg(type).arg(value);
        if (onNews)
            onNews();
    }
};

/// The window's side of the decoder, the session and the record commands, as a log of calls.
class RecordedWindow : public DecoderHost, public RecordCommands, public SessionHost
{
public:
    void syncFound() override { calls << QStringLiteral("syncFound"); }
    void passEnded() override { calls << QStringLiteral("passEnded"); }
    void mnuStart_Click() override { calls << QStringLiteral("Record"); }
    void mnuStop_Click() override { calls << QStringLiteral("Stop"); }
    void linkFound() override { calls << QStringLiteral("linkFound"); }
    void linkLost() override { calls << QStringLiteral("linkLost"); }
    void stopLogTimer() override { calls << QStringLiteral("stopLogTimer"); }
    void UpdateLiveView() override { calls << QStringLiteral("UpdateLiveView"); }
    void mnuComPort_Click() override { calls << QStringLiteral("ComPort"); }
    void mnuExit_Click() override { calls << QStringLiteral("Exit"); }

    QStringList calls;
};
