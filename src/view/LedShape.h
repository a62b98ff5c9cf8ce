#pragma once

#include <QWidget>

/// The round Receive LED. Its colour is given as the original did, 0xBBGGRR.
class LedShape : public QWidget
{
    Q_OBJECT

public:
    explicit LedShape(QWidget *parent = nullptr);

    [[nodiscard]] quint32 FillColor() const { return m_fillColor; }
    void setFillColor(quint32 color);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    quint32 m_fillColor = 0;
};
