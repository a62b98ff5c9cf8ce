#pragma once

#include <QString>

#include <vector>

struct EventMark
{
    QString label;
    qint32 color; // 0xBBGGRR
    qint16 height;
    float time;
};

struct MethodText
{
    QString text;
    float time;
};

/// @brief What a run carries beside its samples: event marks, method texts and the notes.
/// Kept in the order they came, which for a live run is the order of time.
class ChartAnnotations
{
public:
    /// Both throw std::bad_alloc when nothing more can be held; nothing changes then.
    void addEventMark(const QString &label, qint32 color, qint16 height, float time);
    void addMethodText(const QString &text, float time);

    [[nodiscard]] const std::vector<EventMark> &eventMarks() const { return m_marks; }
    [[nodiscard]] const std::vector<MethodText> &methodTexts() const { return m_methodTexts; }
    [[nodiscard]] const QString &notes() const { return m_notes; }
    void setNotes(const QString &notes) { m_notes = notes; }

private:
    std::vector<EventMark> m_marks;
    std::vector<MethodText> m_methodTexts;
    QString m_notes;
};
