#pragma once
/// \class wq::WQLogClass
/// One plain-text log per application, under the user's data folder in
/// "Veltrano Studio/<application name>/<application name>.log". Each record is
/// "YYYY-MM-DD HH:MM:SS +ZZZZ | message" in local time, written with one
/// open/write/close so the file is complete even if the process dies next.
/// Failures are never reported: a log must not take the application down.
///
/// Writers and the trimmer share an advisory lock (flock) on the file:
/// writers hold it shared for their one write, the trimmer exclusively while
/// it carries over what was appended since it read the file and puts the
/// trimmed file in place. No record is lost to a trim in this process or in
/// any other that uses this class; a writer that finds the file replaced
/// while it waited writes to the new one.

#include <WQGeneral/WQCoreExport.h>

#include <QDateTime>
#include <QMetaObject>
#include <QString>

#include <memory>
#include <optional>

namespace wq {

/// \addtogroup log
/// @{

class WQ_CORE_EXPORT WQLogClass {
public:
    /// The log of QCoreApplication::applicationName() ("Default" when empty).
    WQLogClass();
    /// The log of another application of the maker. The name is one folder
    /// and file name: an empty one, ".", "..", or one holding "/", "\\" or
    /// NUL leaves the log disabled, with no path.
    explicit WQLogClass(const QString& applicationName);
    WQLogClass(const WQLogClass&) = delete;
    WQLogClass& operator=(const WQLogClass&) = delete;
    ~WQLogClass();

    /// The process-wide log, made on first use.
    static WQLogClass& sharedLog();

    /// Whether name can name an application's log (see the constructor).
    static bool isUsableApplicationName(const QString& name);

    /// Null when the log folder could not be made.
    QString logFilePath() const;
    /// Does not change whether logging is enabled.
    void setLogFilePath(const QString& path);
    /// Whether lines are written; a disabled log drops them.
    bool isEnabled() const;
    /// Turns writing on or off.
    void setEnabled(bool enabled);

    /// Appends one record (mode 0600 when the file is new). A record longer
    /// than 4095 bytes is cut there, loses its line feed and is followed by one
    /// zero byte, so the next record continues on the same line.
    void log(const QString& message) const;

    /// Deletes the file; a missing file is fine.
    void cleanLogFile() const;

    /// Drops the older part of the file: a binary search over the dated lines,
    /// starting one eighth in, finds roughly where cutOff falls; a few older
    /// records can remain. The rewrite is atomic, so a crash keeps the old file.
    void clearLogDataBeforeDate(const QDateTime& cutOff) const;

    /// The whole text (maxLines 0, or a file of 28 characters or fewer), else
    /// the last maxLines pieces between line feeds: as the file ends with a
    /// line feed, that is the last maxLines - 1 records and a final line feed.
    /// Reads only the end of a large file. Nothing when the file cannot be read.
    std::optional<QString> logDataWithMaxLines(quint64 maxLines) const;

    /// Logs "Terminating..." (connected to QCoreApplication::aboutToQuit).
    void applicationWillTerminate() const;

private:
    struct _wq_Private;
    std::unique_ptr<_wq_Private> _wq_d;

    void _wq_setUp(const QString& applicationName);
};

/// Appends message, unformatted, to the shared log.
WQ_CORE_EXPORT void WQLogNoFormat(const QString& message);

/// @}

} // namespace wq
