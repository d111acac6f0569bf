// Gathers the results files of a benchmark run into one JSON document and
// prints the table of targets; scripts add their own target rows with it.
//
//   wq_bench_report table <results folder> <bench.json> [--strict]
//       merges every <program>.json of the folder, with a note of the
//       machine, into bench.json and prints each target, its measured
//       figure, its bound and whether it holds. --strict: exit status 1
//       when one does not hold.
//   wq_bench_report add <results folder> <program> <target> <value> <unit> <">=" or "<="> <limit> [detail]
//       appends one target row to <program>.json in the folder (made when
//       missing), for measurements taken outside a benchmark program.
//   wq_bench_report time <runs> <command> [arguments...]
//       runs the command that many times, its output thrown away, and
//       prints "<cpu ms> <wall ms> <peak KiB>": the least CPU time (user and
//       system, to the microsecond) and wall time of a run, and the largest
//       resident size. Status 1 when a run fails.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <limits>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

namespace {

QJsonObject readObject(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

bool writeObject(const QString& path, const QJsonObject& object)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(QJsonDocument(object).toJson()) >= 0;
}

QJsonObject machine()
{
    QFile cpuinfo(QStringLiteral("/proc/cpuinfo"));
    QString model;
    QStringList flags;
    if (cpuinfo.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : cpuinfo.readAll().split('\n')) {
            const QString text = QString::fromLatin1(line);
            if (model.isEmpty() && text.startsWith(u"model name"))
                model = text.section(u':', 1).trimmed();
            if (flags.isEmpty() && text.startsWith(u"flags"))
                flags = text.section(u':', 1).split(u' ', Qt::SkipEmptyParts);
        }
    }
    QJsonObject features;
    for (const char* feature : {"ssse3", "avx2", "avx512f", "avx512bw", "avx512vbmi", "aes", "pclmulqdq", "vaes"})
        features.insert(QLatin1String(feature), flags.contains(QLatin1String(feature)));
    QFile loadavg(QStringLiteral("/proc/loadavg"));
    const QString load = loadavg.open(QIODevice::ReadOnly) ? QString::fromLatin1(loadavg.readAll()).section(u' ', 0, 2)
                                                           : QString();
    return {{"cpu", model}, {"cores", QThread::idealThreadCount()}, {"features", features}, {"load_average", load}};
}

QString figure(double value, const QString& unit)
{
    return QString::number(value, 'f', value >= 100 ? 0 : 2) + unit;
}

int table(const QString& folder, const QString& output, bool strict)
{
    QJsonArray programs, targets;
    const QDir dir(folder);
    for (const QString& name : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        const QJsonObject program = readObject(dir.filePath(name));
        if (program.isEmpty()) {
            std::fprintf(stderr, "wq_bench_report: %s is not a results file\n", qPrintable(dir.filePath(name)));
            continue;
        }
        programs.append(program);
        for (const QJsonValue& row : program.value(u"targets").toArray()) {
            QJsonObject target = row.toObject();
            target.insert(QStringLiteral("program"), program.value(u"program"));
            targets.append(target);
        }
    }
    if (!writeObject(output, {{"machine", machine()}, {"programs", programs}, {"targets", targets}})) {
        std::fprintf(stderr, "wq_bench_report: cannot write %s\n", qPrintable(output));
        return 2;
    }

    int missed = 0;
    std::printf("\n%-62s %12s %12s  %s\n", "Target (bench.json)", "measured", "bound", "holds");
    QString program;
    for (const QJsonValue& value : targets) {
        const QJsonObject t = value.toObject();
        if (t.value(u"program").toString() != program) {
            program = t.value(u"program").toString();
            std::printf("%s\n", qPrintable(program));
        }
        const bool holds = t.value(u"holds").toBool();
        missed += holds ? 0 : 1;
        const QString unit = t.value(u"unit").toString();
        const bool measured = t.value(u"measured").toBool(true);
        std::printf("  %-60s %12s %2s %9s  %s\n", qPrintable(t.value(u"target").toString()),
                    measured ? qPrintable(figure(t.value(u"value").toDouble(), unit)) : "-",
                    qPrintable(t.value(u"bound").toString()), qPrintable(figure(t.value(u"limit").toDouble(), unit)),
                    holds ? "yes" : measured ? "NO (MISSED)" : "NO (not measured)");
    }
    std::printf("%lld of %lld targets hold, %lld missed; details in %s\n", qlonglong(targets.size() - missed),
                qlonglong(targets.size()), qlonglong(missed), qPrintable(output));
    return strict && missed > 0 ? 1 : 0;
}

int add(const QStringList& a)
{
    bool valueOk = false, limitOk = false;
    const double value = a.at(3).toDouble(&valueOk);
    const double limit = a.at(6).toDouble(&limitOk);
    const QString bound = a.at(5);
    if (!valueOk || !limitOk || (bound != u">=" && bound != u"<=")) {
        std::fprintf(stderr, "wq_bench_report add: value and limit are numbers, the bound is >= or <=\n");
        return 2;
    }
    const QString path = QDir(a.at(0)).filePath(a.at(1) + QStringLiteral(".json"));
    QJsonObject program = readObject(path);
    program.insert(QStringLiteral("program"), a.at(1));
    QJsonArray targets = program.value(u"targets").toArray();
    targets.append(QJsonObject{{"target", a.at(2)},
                               {"value", value},
                               {"unit", a.at(4)},
                               {"bound", bound},
                               {"limit", limit},
                               {"holds", bound == u">=" ? value >= limit : value <= limit},
                               {"detail", a.size() > 7 ? a.at(7) : QString()}});
    program.insert(QStringLiteral("targets"), targets);
    if (!writeObject(path, program)) {
        std::fprintf(stderr, "wq_bench_report: cannot write %s\n", qPrintable(path));
        return 2;
    }
    return 0;
}

// Whole processes, measured as the kernel accounts for them.
int time(int runs, char** command)
{
    double cpu = std::numeric_limits<double>::max(), wall = cpu;
    long peak = 0;
    for (int run = 0; run < runs; ++run) {
        timespec start{}, stop{};
        ::clock_gettime(CLOCK_MONOTONIC, &start);
        const pid_t child = ::fork();
        if (child < 0)
            return 1;
        if (child == 0) {
            const int null = ::open("/dev/null", O_WRONLY);
            ::dup2(null, STDOUT_FILENO);
            ::dup2(null, STDERR_FILENO);
            ::execvp(command[0], command);
            ::_exit(127);
        }
        int status = 0;
        rusage usage{};
        if (::wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            std::fprintf(stderr, "wq_bench_report: %s failed\n", command[0]);
            return 1;
        }
        ::clock_gettime(CLOCK_MONOTONIC, &stop);
        const auto ms = [](const timeval& t) { return double(t.tv_sec) * 1e3 + double(t.tv_usec) / 1e3; };
        cpu = std::min(cpu, ms(usage.ru_utime) + ms(usage.ru_stime));
        wall = std::min(wall, double(stop.tv_sec - start.tv_sec) * 1e3 + double(stop.tv_nsec - start.tv_nsec) / 1e6);
        peak = std::max(peak, usage.ru_maxrss);
    }
    std::printf("%.3f %.3f %ld\n", cpu, wall, peak);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    // Before Qt sees the command's own arguments.
    if (argc >= 4 && std::string_view(argv[1]) == "time")
        return time(std::max(1, std::atoi(argv[2])), argv + 3);
    QCoreApplication app(argc, argv);
    const QStringList a = app.arguments().mid(1);
    if (a.size() >= 3 && a.at(0) == u"table")
        return table(a.at(1), a.at(2), a.contains(QStringLiteral("--strict")));
    if (a.size() >= 8 && a.at(0) == u"add")
        return add(a.mid(1));
    std::fprintf(stderr, "usage: wq_bench_report table <results folder> <bench.json> [--strict]\n"
                         "       wq_bench_report add <results folder> <program> <target> <value> <unit> <>=|<=> "
                         "<limit> [detail]\n"
                         "       wq_bench_report time <runs> <command> [arguments...]\n");
    return 2;
}
