#pragma once
/// \class wq::WQDocument
/// What model objects need from the document that owns them. Documents are
/// notification senders so that a receiver can tell a document apart from a
/// model object when it takes a notification apart.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

class QUndoStack;

namespace wq {

/// \addtogroup model
/// @{

class WQ_CORE_EXPORT WQDocument : public WQNotificationSender {
public:
    /// The document's undo stack, or nullptr; the document keeps ownership.
    virtual QUndoStack* undoManager() const = 0;
};

/// Anything that can name the document it belongs to (model objects, window
/// controllers).
class WQ_CORE_EXPORT WQDocumentHolder {
public:
    virtual ~WQDocumentHolder() = default;
    /// The document, or nullptr when there is none.
    virtual WQDocument* document() const = 0;
};

/// @}

} // namespace wq
