#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include <QPromise>
#include <QThreadPool>

#include <memory>

namespace wq {

namespace {

// work() on the global thread pool; its answer arrives through the future.
template <typename Result, typename Work>
QFuture<Result> onThreadPool(Work work)
{
    // Shared: the pool copies the task it is given.
    const auto promise = std::make_shared<QPromise<Result>>();
    QFuture<Result> future = promise->future();
    promise->start();
    QThreadPool::globalInstance()->start([promise, work = std::move(work)] {
        promise->addResult(work());
        promise->finish();
    });
    return future;
}

} // namespace

QFuture<QString> xml_encryptDocumentWithPasswordAsync(const QString& document, const QString& password)
{
    return onThreadPool<QString>([document, password] { return xml_encryptDocumentWithPassword(document, password); });
}

QFuture<QByteArray> xml_encryptDocumentUTF8WithPasswordAsync(const QByteArray& document, const QString& password)
{
    return onThreadPool<QByteArray>(
        [document, password] { return xml_encryptDocumentUTF8WithPassword(document, password); });
}

QFuture<QString> xml_encryptDocumentAuthenticatedWithPasswordAsync(const QString& document, const QString& password,
                                                                   std::uint32_t iterationCount)
{
    return onThreadPool<QString>([document, password, iterationCount] {
        return xml_encryptDocumentAuthenticatedWithPassword(document, password, iterationCount);
    });
}

QFuture<QByteArray> xml_encryptDocumentUTF8AuthenticatedWithPasswordAsync(const QByteArray& document,
                                                                          const QString& password,
                                                                          std::uint32_t iterationCount)
{
    return onThreadPool<QByteArray>([document, password, iterationCount] {
        return xml_encryptDocumentUTF8AuthenticatedWithPassword(document, password, iterationCount);
    });
}

QFuture<WQDecryptedDocument> xml_decryptDocumentWithPasswordAsync(const QString& envelope, const QString& password,
                                                                  const WQEnvelopeLimits& limits)
{
    return onThreadPool<WQDecryptedDocument>(
        [envelope, password, limits] { return xml_decryptDocumentWithPassword(envelope, password, limits); });
}

QFuture<WQDecryptedDocumentUTF8> xml_decryptDocumentUTF8WithPasswordAsync(const QByteArray& envelope,
                                                                          const QString& password,
                                                                          const WQEnvelopeLimits& limits)
{
    return onThreadPool<WQDecryptedDocumentUTF8>(
        [envelope, password, limits] { return xml_decryptDocumentUTF8WithPassword(envelope, password, limits); });
}

} // namespace wq
