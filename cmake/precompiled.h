// Headers that nearly every source file reaches and that never change.
#include <QFuture>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>
