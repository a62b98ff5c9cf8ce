#pragma once

#include <QJsonObject>

class QIODevice;

namespace VelquinSim {

struct Scenario;
struct SimBlock;

/// The record of what was sent, block by block, as one JSON document written as the stream
/// goes, one block a line, so that an endless scenario stopped by a signal still leaves a
/// whole document behind.
class Manifest
{
public:
    explicit Manifest(QIODevice &device);

    void begin(const Scenario &scenario);
    void add(const SimBlock &block);
    void finish();

    static QJsonObject toJson(const SimBlock &block);
    static QJsonObject toJson(const Scenario &scenario);

private:
    QIODevice &m_device;
    qint64 m_count = 0;
};

} // namespace VelquinSim
