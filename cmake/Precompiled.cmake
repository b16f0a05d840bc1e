# quorvin_precompiled_headers(NAME HEADERS header... USES target...)
#
# Compiles headers once for all targets that then say
# `target_precompile_headers(TARGET REUSE_FROM NAME)`: those must have the same compiler options. The
# release build does without (see CMakePresets.json), so a source that leans on these headers
# instead of including what it uses does not compile there.
function(quorvin_precompiled_headers name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;USES")
    file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp" CONTENT "")
    add_library(${name} OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    target_link_libraries(${name} PRIVATE ${arg_USES})
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

set(QUORVIN_COMMON_HEADERS
    <algorithm> <array> <atomic> <chrono> <cmath> <cstdint> <deque> <filesystem> <functional> <limits>
    <map> <memory> <mutex> <numeric> <optional> <ranges> <set> <span> <string> <string_view>
    <thread> <type_traits> <utility> <variant> <vector>
    <QByteArray> <QDateTime> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject> <QList>
    <QLoggingCategory> <QObject> <QPointer> <QString> <QStringList> <QTimer> <QUrl> <QVariant>)
