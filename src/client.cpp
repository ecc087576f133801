// The `tillmora` command: a small front end that hands a command to the
// running launcher over its socket, so `tillmora toggle` (on Wayland, the
// hotkey itself) costs a process start without Qt. Whatever the launcher does
// not take (no launcher runs, a command that runs in the caller, starting the
// launcher) is done by the full program, which replaces this process.
//
// Plain POSIX and the standard library on purpose: loading Qt is the cost
// this file exists to avoid.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include <limits.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// As long as the full program waits for the launcher (it may be loading).
constexpr int kReplyTimeoutMs = 120000;
constexpr size_t kMaxReplyBytes = 64u << 20;

std::string env(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

// Where the launcher listens; the same rule as the launcher's. A mismatch
// (an unusable runtime folder the launcher replaced) only means the full
// program is asked instead.
std::string socketPath()
{
    std::string runtime = env("XDG_RUNTIME_DIR");
    if (runtime.empty()) {
        std::string temp = env("TMPDIR");
        if (temp.empty())
            temp = "/tmp";
        while (temp.size() > 1 && temp.back() == '/')
            temp.pop_back();
        runtime = temp + "/tillmora-" + std::to_string(getuid());
    }
    return runtime + "/tillmora/instance.sock";
}

std::string quoted(const std::string &text)
{
    std::string out = "\"";
    for (const unsigned char c : text) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (c < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
                out += escaped;
            } else {
                out += char(c);
            }
        }
    }
    return out + "\"";
}

// The launcher's answer: a flat JSON object of strings, numbers and booleans.
struct Reply {
    bool hasError = false;
    int exitCode = 1;
    std::string out;
    std::string err;
};

class Parser {
public:
    explicit Parser(const std::string &text) : m_text(text) {}

    std::optional<Reply> reply()
    {
        Reply reply;
        space();
        if (!take('{'))
            return std::nullopt;
        space();
        if (take('}'))
            return reply;
        for (;;) {
            const auto key = string();
            space();
            if (!key || !take(':'))
                return std::nullopt;
            space();
            if (peek() == '"') {
                const auto value = string();
                if (!value)
                    return std::nullopt;
                if (*key == "out")
                    reply.out = *value;
                else if (*key == "err")
                    reply.err = *value;
                else if (*key == "error")
                    reply.hasError = true;
            } else {
                const size_t start = m_at;
                while (m_at < m_text.size() && std::strchr("-+.eE0123456789truefalsn", m_text[m_at]))
                    ++m_at;
                if (m_at == start)
                    return std::nullopt; // objects and lists are not part of an answer
                if (*key == "exitCode")
                    reply.exitCode = std::atoi(m_text.substr(start, m_at - start).c_str());
                else if (*key == "error")
                    reply.hasError = true;
            }
            space();
            if (take('}'))
                return reply;
            if (!take(','))
                return std::nullopt;
            space();
        }
    }

private:
    char peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }
    bool take(char c)
    {
        if (peek() != c)
            return false;
        ++m_at;
        return true;
    }
    void space()
    {
        while (m_at < m_text.size() && std::strchr(" \t\r\n", m_text[m_at]))
            ++m_at;
    }
    void utf8(unsigned code, std::string &out)
    {
        if (code < 0x80) {
            out += char(code);
        } else if (code < 0x800) {
            out += char(0xC0 | (code >> 6));
            out += char(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            out += char(0xE0 | (code >> 12));
            out += char(0x80 | ((code >> 6) & 0x3F));
            out += char(0x80 | (code & 0x3F));
        } else {
            out += char(0xF0 | (code >> 18));
            out += char(0x80 | ((code >> 12) & 0x3F));
            out += char(0x80 | ((code >> 6) & 0x3F));
            out += char(0x80 | (code & 0x3F));
        }
    }
    std::optional<unsigned> hex4()
    {
        if (m_at + 4 > m_text.size())
            return std::nullopt;
        char *end = nullptr;
        const std::string digits = m_text.substr(m_at, 4);
        const unsigned long value = std::strtoul(digits.c_str(), &end, 16);
        if (end != digits.c_str() + 4)
            return std::nullopt;
        m_at += 4;
        return unsigned(value);
    }
    std::optional<std::string> string()
    {
        if (!take('"'))
            return std::nullopt;
        std::string out;
        while (m_at < m_text.size()) {
            const char c = m_text[m_at++];
            if (c == '"')
                return out;
            if (c != '\\') {
                out += c;
                continue;
            }
            const char e = peek();
            ++m_at;
            switch (e) {
            case '"': out += '"'; break;
            case '\\': out += '\\'; break;
            case '/': out += '/'; break;
            case 'b': out += '\b'; break;
            case 'f': out += '\f'; break;
            case 'n': out += '\n'; break;
            case 'r': out += '\r'; break;
            case 't': out += '\t'; break;
            case 'u': {
                auto code = hex4();
                if (!code)
                    return std::nullopt;
                // A pair of surrogates is one character beyond the 16-bit plane.
                if (*code >= 0xD800 && *code < 0xDC00 && take('\\') && take('u')) {
                    const auto low = hex4();
                    if (!low || *low < 0xDC00 || *low > 0xDFFF)
                        return std::nullopt;
                    code = 0x10000 + ((*code - 0xD800) << 10) + (*low - 0xDC00);
                }
                utf8(*code, out);
                break;
            }
            default: return std::nullopt;
            }
        }
        return std::nullopt;
    }

    const std::string &m_text;
    size_t m_at = 0;
};

bool writeAll(int fd, const std::string &data)
{
    for (size_t done = 0; done < data.size();) {
        const ssize_t n = ::write(fd, data.data() + done, data.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += size_t(n);
    }
    return true;
}

// The connected socket of the launcher, if one of this user's listens.
int connectToLauncher()
{
    const std::string path = socketPath();
    sockaddr_un address{};
    if (path.size() >= sizeof address.sun_path)
        return -1;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return -1;
    // Another user's process behind our path must not hear our arguments.
    ucred peer{};
    socklen_t length = sizeof peer;
    if (::connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || ::getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &length) != 0 || peer.uid != getuid()) {
        ::close(fd);
        return -1;
    }
    return fd;
}

enum class Outcome { handed, notTaken };

// Sends the command; notTaken when nothing was carried out (so the full
// program may do it), else prints the answer into *exitCode.
Outcome handToLauncher(const std::vector<std::string> &args, int *exitCode)
{
    const int fd = connectToLauncher();
    if (fd < 0)
        return Outcome::notTaken;
    char cwd[PATH_MAX];
    std::string request = "{\"command\":\"cli\",\"fallback\":true,\"args\":[";
    for (size_t i = 0; i < args.size(); ++i)
        request += (i ? "," : "") + quoted(args[i]);
    request += "]";
    if (::getcwd(cwd, sizeof cwd))
        request += ",\"cwd\":" + quoted(cwd);
    request += "}\n";
    if (!writeAll(fd, request)) {
        ::close(fd);
        return Outcome::notTaken;
    }

    std::string answer;
    char buffer[65536];
    for (;;) {
        pollfd wait{fd, POLLIN, 0};
        const int ready = ::poll(&wait, 1, kReplyTimeoutMs);
        if (ready < 0 && errno == EINTR)
            continue;
        const ssize_t n = ready > 0 ? ::read(fd, buffer, sizeof buffer) : -1;
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0 || answer.size() > kMaxReplyBytes)
            break;
        answer.append(buffer, size_t(n));
        if (answer.find('\n') != std::string::npos)
            break;
    }
    ::close(fd);
    const size_t end = answer.find('\n');
    // The command may have run: never run it a second time on a bad answer.
    const auto reply = end == std::string::npos ? std::nullopt : Parser(answer.substr(0, end)).reply();
    if (!reply) {
        std::fputs("tillmora: the running launcher did not answer\n", stderr);
        *exitCode = 1;
        return Outcome::handed;
    }
    if (reply->hasError)
        return Outcome::notTaken;
    std::fputs(reply->out.c_str(), stdout);
    std::fputs(reply->err.c_str(), stderr);
    *exitCode = reply->exitCode;
    return Outcome::handed;
}

// The full program beside this one (a build tree) or in libexec (installed).
std::string fullProgram()
{
    char self[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", self, sizeof self - 1);
    if (n <= 0)
        return "tillmora-app";
    self[n] = '\0';
    std::string dir(self);
    dir.erase(dir.rfind('/'));
    for (const std::string &candidate : {dir + "/tillmora-app", dir + "/../libexec/tillmora/tillmora-app"})
        if (::access(candidate.c_str(), X_OK) == 0)
            return candidate;
    return dir + "/tillmora-app";
}

}

int main(int argc, char **argv)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    // Starting the launcher, and options, are the full program's.
    const bool mayHandOver = !args.empty() && !args.front().empty() && args.front().front() != '-';
    int exitCode = 0;
    if (mayHandOver && handToLauncher(args, &exitCode) == Outcome::handed)
        return exitCode;
    const std::string program = fullProgram();
    argv[0] = const_cast<char *>(program.c_str());
    ::execv(program.c_str(), argv);
    std::fprintf(stderr, "tillmora: cannot run %s: %s\n", program.c_str(), std::strerror(errno));
    return 127;
}
