#pragma once
/// \class wq::WQBaseModelObject
/// The base of the applications' model objects: the owning document, a 32-bit
/// identifier, and change notifications that can be switched off for bulk edits.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/model/WQDocument.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QString>
#include <QVariant>

#include <memory>

namespace wq {

/// \addtogroup model
/// @{

/// The one user-info key under which a model object's notification carries data.
inline const QString kWQKey_UserData = QStringLiteral("kWQKey_UserData");

class WQ_CORE_EXPORT WQBaseModelObject : public WQNotificationSender, public WQDocumentHolder {
public:
    WQBaseModelObject();
    /// Notifications name their sender by address, so model objects have identity.
    WQBaseModelObject(const WQBaseModelObject&) = delete;
    WQBaseModelObject& operator=(const WQBaseModelObject&) = delete;
    /// Removes every registration this object holds in the default centre.
    ~WQBaseModelObject() override;

    /// Not owned: the document must outlive the object or clear the reference.
    void setDocument(WQDocument* document);
    /// The owning document given at construction, or nullptr.
    WQDocument* document() const override;
    /// The document's undo stack; nullptr without a document.
    QUndoStack* undoManager() const;

    /// Sets the identifier; the application keeps identifiers unique within a document.
    void setVeltranoID(quint32 identifier);
    /// The identifier, compared as unsigned 32-bit; 0 until set.
    quint32 veltranoID() const;

    /// Posts name with this object as sender and no user info, while sending is on.
    void sendNotification(const QString& name) const;
    /// With valid data, the user info is {kWQKey_UserData: data}; an invalid
    /// QVariant means no data and posts no user info at all.
    void sendNotification(const QString& name, const QVariant& data) const;

    /// A switch, not a counter: one enable undoes any number of disables.
    void disableNotificationSending();
    /// Turns change notifications back on.
    void enableNotificationSending();

protected:
    /// Subclasses observe through this so that the base's destructor can find
    /// and drop the registration whatever the subclass's layout.
    void observeNotification(const QString& name, const WQNotificationSender* sender,
                             WQNotificationCenter::Handler handler);

private:
    struct _wq_Private;
    std::unique_ptr<_wq_Private> _wq_d;
};

/// Takes a notification apart. Each out-place may be nullptr. The document is
/// the sender itself when it is a document, else the sender's document when it
/// has one, else nullptr. The data is the kWQKey_UserData entry, or an invalid
/// QVariant.
WQ_CORE_EXPORT void WQExtractDataFromNotification(const WQNotification& notification,
                                                  const WQNotificationSender** sender,
                                                  const WQDocument** document = nullptr,
                                                  QVariant* data = nullptr);

/// @}

} // namespace wq
