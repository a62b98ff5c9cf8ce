#include "chart/Quillchart.h"
#include "runtime/RuntimeError.h"
#include "view/Twips.h"
#include "view/frmMain.h"

#include <QEvent>
#include <QTabWidget>
#include <QToolBar>

bool frmMain::eventFilter(QObject *watched, QEvent *event)
{
    // The client area has its final size only once the main window's own layout has run.
    if (watched == centralWidget() && event->type() == QEvent::Resize)
        ArrangeMainWindow();
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::ArrangeMainWindow()
{
    QWidget *client = centralWidget();
    // The axis frame's width sets the window's narrowest size; 5000 twips its lowest.
    ignoreErrors([&] {
        const int chrome = width() - client->width();
        setMinimumSize(FrameScaleAxis->sizeHint().width() + twips(this, 100) + chrome,
                       twips(this, 5000));
    });
    const int SW = client->width();
    const int SH = client->height();
    ignoreErrors([&] {
        FrameScaleAxis->resize(FrameScaleAxis->sizeHint());
        FrameScaleAxis->move((SW - FrameScaleAxis->width()) / 2, SH - FrameScaleAxis->height());
    });
    ignoreErrors([&] {
        const int top = twips(this, 100) / 2;
        TabChart->setGeometry(0, top, SW, FrameScaleAxis->y() - top - twips(this, 100) / 2);
    });
    ignoreErrors([&] { Chart[CurrentChart]->Redraw(); });
}
