// A stand-in for a coding agent in a terminal: takes what is typed, as such programs do, and keeps
// it in a file. Its process has the name under which it is started, mostly that of a symbolic link.
//
//     agent FILE [plain]
//
// FILE gets every byte that comes in. FILE.ready appears when the agent reads. Unless "plain" is
// given, it asks the terminal to mark what is pasted.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: agent FILE [plain]\n", stderr);
        return 2;
    }
    const std::string file = argv[1];
    const bool isPlain = argc > 2 && std::strcmp(argv[2], "plain") == 0;

    termios mode{};
    if (tcgetattr(STDIN_FILENO, &mode) != 0) {
        fail("tcgetattr");
    }
    cfmakeraw(&mode);
    mode.c_lflag |= ISIG;
    if (tcsetattr(STDIN_FILENO, TCSANOW, &mode) != 0) {
        fail("tcsetattr");
    }
    if (!isPlain) {
        constexpr char markPastes[] = "\x1b[?2004h";
        write(STDOUT_FILENO, markPastes, sizeof markPastes - 1);
    }
    const int kept = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int ready = open((file + ".ready").c_str(), O_WRONLY | O_CREAT, 0600);
    if (kept == -1 || ready == -1) {
        fail("open");
    }
    close(ready);

    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count <= 0) {
            return 0;
        }
        write(kept, buffer.data(), static_cast<std::size_t>(count));
    }
}
