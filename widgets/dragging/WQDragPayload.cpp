#include <WQGeneral/dragging/WQDragPayload.h>

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>
#include <QVariantMap>

namespace wq {

namespace {

// Both sides of a drag are this library; the stream format is fixed so a
// newer Qt on one side cannot change it.
constexpr QDataStream::Version kStreamVersion = QDataStream::Qt_6_0;
// A payload is a few dozen bytes; anything far bigger is not one.
constexpr qsizetype kMaximumPayloadSize = 4096;

std::optional<qint64> signedNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return value.toLongLong();
    default:
        return std::nullopt;
    }
}

std::optional<quint64> unsignedNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return value.toULongLong();
    default:
        return std::nullopt;
    }
}

} // namespace

QByteArray WQDragAndDropPayloadData(const WQDragAndDropPayload& payload)
{
    const QVariantMap map{
        {kWQPasteboardFlavor_DragAndDropView, QVariant::fromValue<qlonglong>(payload.tag)},
        {kWQPasteboardFlavor_Delegate, QVariant::fromValue<qulonglong>(payload.delegate)},
    };
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    out.setVersion(kStreamVersion);
    out << map;
    return out.status() == QDataStream::Ok ? data : QByteArray();
}

std::optional<WQDragAndDropPayload> WQDragAndDropPayloadFromData(const QByteArray& data)
{
    if (data.isEmpty() || data.size() > kMaximumPayloadSize)
        return std::nullopt;
    QDataStream in(data);
    in.setVersion(kStreamVersion);
    QVariantMap map;
    in >> map;
    if (in.status() != QDataStream::Ok || !in.atEnd())
        return std::nullopt;
    const std::optional<qint64> tag = signedNumber(map.value(kWQPasteboardFlavor_DragAndDropView));
    const std::optional<quint64> delegate = unsignedNumber(map.value(kWQPasteboardFlavor_Delegate));
    if (!tag || !delegate)
        return std::nullopt;
    return WQDragAndDropPayload{*tag, *delegate};
}

std::optional<WQDragAndDropPayload> WQReadDragAndDropPayload(const QMimeData& mimeData)
{
    if (!mimeData.hasFormat(kWQPasteboardFlavor_DragAndDropView))
        return std::nullopt;
    return WQDragAndDropPayloadFromData(mimeData.data(kWQPasteboardFlavor_DragAndDropView));
}

} // namespace wq
