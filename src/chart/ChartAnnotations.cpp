#include "chart/ChartAnnotations.h"

void ChartAnnotations::addEventMark(const QString &label, qint32 color, qint16 height, float time)
{
    m_marks.push_back(EventMark{label, color, height, time});
}

void ChartAnnotations::addMethodText(const QString &text, float time)
{
    m_methodTexts.push_back(MethodText{text, time});
}
