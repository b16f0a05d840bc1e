#include "platform/linux/posix/Spawn.h"

#include "platform/ProcessRunner.h"

#include <csignal>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <spawn.h>

namespace quorvin {

namespace {

void check(int error) {
    if (error != 0) {
        throwLaunchError(error);
    }
}

/// What a child does with its descriptors before its program begins.
class FileActions {
public:
    explicit FileActions(const SpawnOptions& options) {
        check(posix_spawn_file_actions_init(&m_actions));
        check(posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        addOutput(STDOUT_FILENO, options.output);
        addOutput(STDERR_FILENO, options.error);
        // Also those that a library has opened without O_CLOEXEC.
        check(posix_spawn_file_actions_addclosefrom_np(&m_actions, firstOwnDescriptor));
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    void addOutput(int descriptor, int source) {
        check(
            source == SpawnOptions::nullDevice
                ? posix_spawn_file_actions_addopen(&m_actions, descriptor, "/dev/null", O_WRONLY, 0)
                : posix_spawn_file_actions_adddup2(&m_actions, source, descriptor));
    }

    posix_spawn_file_actions_t m_actions{};
};

/// Signals as a fresh program expects them, whatever this one ignores or blocks.
class Attributes {
public:
    explicit Attributes(SpawnOptions::Session session) {
        check(posix_spawnattr_init(&m_attributes));
        sigset_t signals;
        sigemptyset(&signals);
        check(posix_spawnattr_setsigmask(&m_attributes, &signals));
        sigfillset(&signals);
        check(posix_spawnattr_setsigdefault(&m_attributes, &signals));
        const int sessionFlag = session == SpawnOptions::Session::own ? POSIX_SPAWN_SETSID : 0;
        check(posix_spawnattr_setflags(
            &m_attributes,
            static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | sessionFlag)));
    }
    ~Attributes() { posix_spawnattr_destroy(&m_attributes); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    [[nodiscard]] const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

/// An argument vector as exec wants it.
class ArgumentVector {
public:
    ArgumentVector(const QString& program, const QStringList& arguments) {
        m_bytes.push_back(program.toUtf8());
        for (const QString& argument : arguments) {
            m_bytes.push_back(argument.toUtf8());
        }
        for (QByteArray& bytes : m_bytes) {
            m_pointers.push_back(bytes.data());
        }
        m_pointers.push_back(nullptr);
    }

    [[nodiscard]] const char* program() const { return m_pointers.front(); }
    [[nodiscard]] char* const* get() const { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_bytes;
    std::vector<char*> m_pointers;
};

} // namespace

pid_t spawn(const QString& program, const QStringList& arguments, const SpawnOptions& options) {
    const FileActions actions(options);
    const Attributes attributes(options.session);
    const ArgumentVector argv(program, arguments);
    pid_t id = -1;
    check(::posix_spawn(&id, argv.program(), actions.get(), attributes.get(), argv.get(), environ));
    return id;
}

void throwLaunchError(int error) {
    throw ProcessLaunchError(std::generic_category().message(error));
}

} // namespace quorvin
