#include "output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "terminal.h"

namespace {

constexpr size_t full = 65536;

bool is_same_file(int one, int other)
{
    struct stat first {};
    struct stat second {};
    return fstat(one, &first) == 0 && fstat(other, &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

}  // namespace

Output::Output() : is_terminal_(isatty(STDOUT_FILENO) != 0) {}

const Output::ErrorFile &Output::error_file()
{
    if (!error_file_)
        error_file_ = {.is_terminal = isatty(STDERR_FILENO) != 0,
                       .is_standard_output = is_same_file(STDOUT_FILENO, STDERR_FILENO)};
    return *error_file_;
}

void Output::ended_record()
{
    if (results_.size() >= full) write(STDOUT_FILENO, results_);
}

void Output::refuse(std::string_view place, std::string_view message)
{
    std::string &text = error_file().is_standard_output ? results_ : refusals_;
    text += place;
    if (error_file().is_terminal)
        text += for_terminal(message);
    else
        text += message;
    text += '\n';
    if (text.size() >= full) flush();
}

void Output::flush()
{
    write(STDOUT_FILENO, results_);
    write(STDERR_FILENO, refusals_);
}

void Output::write(int file, std::string &text)
{
    for (size_t done = 0; is_open_ && done < text.size();) {
        const ssize_t count = ::write(file, text.data() + done, text.size() - done);
        if (count >= 0) {
            done += static_cast<size_t>(count);
        } else if (errno != EINTR) {
            is_open_ = false;
            if (file == STDOUT_FILENO) error_ = errno;
        }
    }
    text.clear();
}

int Output::finish(int status)
{
    flush();
    if (error_ == 0 || error_ == EPIPE) return status;
    print_problem(std::string("cannot write: ") + std::strerror(error_));
    return 1;
}
