// Stands where the helper would be and misuses what it has been told. TARVINEL_ATTACK names how; what came of
// it is one line on standard output, and the token is left in the file TARVINEL_TOKEN_FILE for the test.

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t somebodyElse = 65534;

struct Told
{
    std::string server;
    std::string token;
};

// 0 when connected, else the error.
int enter(const Told& told, int& socket)
{
    const char* folder = std::getenv("TMPDIR");
    const std::string path = std::string(folder != nullptr ? folder : "/tmp") + '/' + told.server;
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool connected =
        ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    return connected ? 0 : errno;
}

void say(int socket, const std::string& line)
{
    const std::string bytes = line + '\n';
    if (::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0)
        std::printf("not sent; ");
}

// Everything until the other side closes.
std::string hearToTheEnd(int socket)
{
    std::string heard;
    std::array<char, 4096> bytes{};
    for (ssize_t n = 0; (n = ::recv(socket, bytes.data(), bytes.size(), 0)) > 0;)
        heard.append(bytes.data(), static_cast<std::size_t>(n));
    return heard;
}

void tellWhetherServed(const char* who, const std::string& heard)
{
    std::printf("%s %s; ", who, heard.empty() ? "not served" : "SERVED");
}

void onlySay(const Told& told, const std::string& line)
{
    int socket = 0;
    std::printf("connected: %s; ", std::strerror(enter(told, socket)));
    if (!line.empty())
        say(socket, line);
    tellWhetherServed("intruder", hearToTheEnd(socket));
}

void useTokenTwice(const Told& told)
{
    int first = 0;
    int second = 0;
    (void)enter(told, first);
    say(first, "AUTH " + told.token + "\nREADY");
    std::array<char, 16> begin{};
    const bool served = ::recv(first, begin.data(), begin.size(), MSG_PEEK) > 0;
    std::printf("helper %s; second: %s; ", served ? "served" : "turned away",
                std::strerror(enter(told, second)));
    say(first, "AUTH " + told.token);
    (void)hearToTheEnd(first);
}

void enterTwice(const Told& told)
{
    int first = 0;
    int second = 0;
    (void)enter(told, first);
    (void)enter(told, second);
    tellWhetherServed("intruder", hearToTheEnd(second));
    say(first, "AUTH " + told.token + "\nREADY\nnonsense");
    std::printf("helper %s; ", hearToTheEnd(first).empty() ? "turned away" : "served");
}

void enterAsSomebodyElse(const Told& told)
{
    if (::fork() == 0) {
        int socket = 0;
        if (::setgid(somebodyElse) != 0 || ::setuid(somebodyElse) != 0)
            std::printf("still the same user; ");
        std::printf("connected: %s; ", std::strerror(enter(told, socket)));
        std::fflush(stdout);
        ::_exit(0);
    }
    (void)::wait(nullptr);
}

void attack(const std::string& name, const Told& told)
{
    if (name == "wrong-token")
        onlySay(told, "AUTH 00000000000000000000000000000000\nREADY");
    else if (name == "request-first")
        onlySay(told, R"(REQ {"v":1,"id":1,"cmd":"OUTP:STAT","args":{"enabled":true}})");
    else if (name == "silence")
        onlySay(told, {});
    else if (name == "token-twice")
        useTokenTwice(told);
    else if (name == "second-connection")
        enterTwice(told);
    else if (name == "another-user")
        enterAsSomebodyElse(told);
}

} // namespace

int main(int argc, char* argv[])
{
    Told told;
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], "--server") == 0)
            told.server = argv[i + 1];
        if (std::strcmp(argv[i], "--token") == 0)
            told.token = argv[i + 1];
    }
    const char* name = std::getenv("TARVINEL_ATTACK");
    const char* file = std::getenv("TARVINEL_TOKEN_FILE");
    std::FILE* out = file != nullptr ? std::fopen(file, "w") : nullptr;
    if (name == nullptr || out == nullptr)
        return EXIT_FAILURE;
    std::fputs(told.token.c_str(), out);
    std::fclose(out);
    ::signal(SIGTERM, SIG_IGN); // to tell what came of it
    attack(name, told);
    std::printf("done\n");
    return EXIT_SUCCESS;
}
