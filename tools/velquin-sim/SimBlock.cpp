#include "SimBlock.h"

#include <QtEndian>

#include <bit>

namespace VelquinSim {

SimBlock SimBlock::sample(char letter, float value)
{
    SimBlock block;
    block.type = quint8(letter);
    block.value = value;
    block.bytes.append(char(kSyncByte));
    block.bytes.append(letter);
    block.bytes.append(floatBytes(value));
    return block;
}

SimBlock SimBlock::parameter(char letter, quint8 value)
{
    SimBlock block;
    block.type = quint8(letter);
    block.value = value;
    block.bytes.append(char(kSyncByte));
    block.bytes.append(letter);
    block.bytes.append(char(value));
    return block;
}

SimBlock SimBlock::method(const QByteArray &text)
{
    SimBlock block;
    block.type = 'M';
    block.text = text;
    block.bytes.append(char(kSyncByte));
    block.bytes.append('M');
    block.bytes.append(text);
    block.bytes.append(char(kSyncByte));
    return block;
}

QByteArray SimBlock::floatBytes(float value)
{
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(std::bit_cast<quint32>(value), bytes.data());
    return bytes;
}

float SimBlock::floatFromBytes(const QByteArray &bytes)
{
    return std::bit_cast<float>(qFromBigEndian<quint32>(bytes.constData()));
}

} // namespace VelquinSim
