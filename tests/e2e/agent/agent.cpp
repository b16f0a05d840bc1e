// A stand-in for a coding agent in a terminal: takes what is typed, as such programs do, and keeps
// it in a file. Its process has the name under which it is started, mostly that of a symbolic link.
//
//     agent FILE
//
// FILE gets every byte that comes in. FILE.ready appears when the agent reads, with the path of the
// terminal device and its process id in it, divided by a blank. It asks the terminal to mark what
// is pasted.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace {

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

void write(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(descriptor, bytes, count);
        if (written < 0) {
            fail("write");
        }
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
}

/// The file appears with its content.
void sayReady(const std::string& file) {
    const char* const tty = ttyname(STDIN_FILENO);
    const std::string draft = file + ".draft";
    const int ready = open(draft.c_str(), O_WRONLY | O_CREAT, 0600);
    if (tty == nullptr || ready == -1) {
        fail("ready");
    }
    const std::string content = tty + (' ' + std::to_string(getpid()));
    write(ready, content.data(), content.size());
    close(ready);
    std::rename(draft.c_str(), file.c_str());
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: agent FILE\n", stderr);
        return 2;
    }
    const std::string file = argv[1];

    termios mode{};
    if (tcgetattr(STDIN_FILENO, &mode) != 0) {
        fail("tcgetattr");
    }
    cfmakeraw(&mode);
    mode.c_lflag |= ISIG;
    if (tcsetattr(STDIN_FILENO, TCSANOW, &mode) != 0) {
        fail("tcsetattr");
    }
    // With the answer to the question behind it, the terminal has taken notice.
    constexpr char markPastesAndAnswer[] = "\x1b[?2004h\x1b[c";
    write(STDOUT_FILENO, markPastesAndAnswer, sizeof markPastesAndAnswer - 1);
    char answer = 0;
    while (answer != 'c') {
        if (read(STDIN_FILENO, &answer, 1) != 1) {
            fail("read");
        }
    }

    const int kept = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (kept == -1) {
        fail("open");
    }
    sayReady(file + ".ready");

    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count <= 0) {
            return 0;
        }
        write(kept, buffer.data(), static_cast<std::size_t>(count));
    }
}
