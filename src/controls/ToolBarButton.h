#pragma once

#include <QDataStream>

class QWidget;

/// What the toolbar buttons that are controls have in common.
namespace ToolBarButton {

constexpr int greatestWidth = 10000; ///< pixels; more is no width but garbage

/// The main window that @p control stands in, through floating toolbars too, else its own window.
QWidget *frameOf(const QWidget &control);

/// Puts a stream into the format that buttons are kept in (little-endian, of a fixed version), and in the end back into
/// the host's.
class StreamFormat
{
public:
    explicit StreamFormat(QDataStream &stream);
    ~StreamFormat();
    Q_DISABLE_COPY_MOVE(StreamFormat)

private:
    QDataStream &m_stream;
    const QDataStream::ByteOrder m_order;
    const QDataStream::FloatingPointPrecision m_precision;
    const int m_version;
};

} // namespace ToolBarButton
