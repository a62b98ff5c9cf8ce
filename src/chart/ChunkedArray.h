#pragma once

#include <QtGlobal>

#include <memory>
#include <vector>

/// An append-only array kept in fixed-size chunks: growing never copies the elements, so an
/// append costs the same after a week of data as after a minute.
template <typename T, int ChunkShift> class ChunkedArray
{
public:
    static constexpr qint64 kChunkSize = qint64(1) << ChunkShift;

    /// Makes room for one more element; the only member that allocates (std::bad_alloc).
    void reserveNext()
    {
        if ((m_size >> ChunkShift) == qint64(m_chunks.size()))
            m_chunks.push_back(std::make_unique_for_overwrite<T[]>(kChunkSize));
    }

    void append(const T &value)
    {
        reserveNext();
        m_chunks[m_size >> ChunkShift][m_size & kMask] = value;
        ++m_size;
    }

    [[nodiscard]] const T &operator[](qint64 i) const
    {
        return m_chunks[i >> ChunkShift][i & kMask];
    }
    [[nodiscard]] qint64 size() const { return m_size; }

private:
    static constexpr qint64 kMask = kChunkSize - 1;

    std::vector<std::unique_ptr<T[]>> m_chunks;
    qint64 m_size = 0;
};
