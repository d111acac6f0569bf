// Precompiled for the core layer and its tests: the Qt and standard headers
// that most of its sources include, parsed once per build instead of per file.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
