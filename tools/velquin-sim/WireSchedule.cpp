#include "WireSchedule.h"

#include <algorithm>

namespace VelquinSim {

QList<WireWrite> WireSchedule::place(const SimBlock &block)
{
    QList<WireWrite> writes;
    const double start = std::max(block.time, m_lineFree);
    if (block.burst) {
        m_lineFree = start;
        writes.append({start, block.bytes});
        return writes;
    }
    for (qsizetype from = 0; from < block.bytes.size(); from += kLongestWrite)
        writes.append(
            {start + double(from) / kBytesPerSecond, block.bytes.mid(from, kLongestWrite)});
    m_lineFree = start + double(block.bytes.size()) / kBytesPerSecond;
    return writes;
}

} // namespace VelquinSim
