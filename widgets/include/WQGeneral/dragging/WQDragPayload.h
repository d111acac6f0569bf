#pragma once
/// \file
/// What a drag of a WQDragAndDropView carries: one MIME type,
/// kWQPasteboardFlavor_DragAndDropView, whose data is a QVariantMap written
/// with QDataStream, holding the view's tag under
/// kWQPasteboardFlavor_DragAndDropView and the identity of the view's
/// delegate (its address in the running process) under
/// kWQPasteboardFlavor_Delegate. The identity means something only inside the
/// application that started the drag: a drop side compares it with the
/// delegates it knows (WQDelegateIdentity), it never follows it.

#include <WQGeneral/WQWidgetsExport.h>

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>

class QMimeData;

namespace wq {

/// \addtogroup dragging
/// @{

/// MIME type of the drag's payload.
inline const QString kWQPasteboardFlavor_DragAndDropView = QStringLiteral("kWQPasteboardFlavor_DragAndDropView");
/// MIME type that carries the delegate's identity alone.
inline const QString kWQPasteboardFlavor_Delegate = QStringLiteral("kWQPasteboardFlavor_Delegate");

/// What a drag of a WQDragAndDropView carries.
struct WQ_WIDGETS_EXPORT WQDragAndDropPayload {
    /// The view's tag.
    qint64 tag = 0;
    quint64 delegate = 0;   ///< 0: the view had no delegate
    friend bool operator==(const WQDragAndDropPayload&, const WQDragAndDropPayload&) = default;
};

/// The number a delegate is known by in a payload.
inline quint64 WQDelegateIdentity(const void* delegate) noexcept
{
    return quint64(reinterpret_cast<quintptr>(delegate));
}

/// The payload as the bytes a drag carries.
WQ_WIDGETS_EXPORT QByteArray WQDragAndDropPayloadData(const WQDragAndDropPayload& payload);
/// Reads the data back; nullopt unless it is such a map with both numbers.
WQ_WIDGETS_EXPORT std::optional<WQDragAndDropPayload> WQDragAndDropPayloadFromData(const QByteArray& data);
/// The payload a drag (or any MIME data) carries, if it carries one.
WQ_WIDGETS_EXPORT std::optional<WQDragAndDropPayload> WQReadDragAndDropPayload(const QMimeData& mimeData);

/// @}

} // namespace wq
