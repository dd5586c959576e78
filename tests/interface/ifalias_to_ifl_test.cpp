#include <fcntl.h>
#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "interface/ifalias_to_ifl.h"
#include "support/guarded.h"

namespace {

using orvex_test::Guarded;

// "1 NAME", or "0" with the destination untouched, as a look-up leaves it.
template <typename Find>
std::string found_by(const Find &find, size_t size = IFALIAS_NAME_BUFSIZE)
{
    Guarded dest(size);
    errno = 77;
    alarm(5);  // for a look-up that waits
    const int found = find(dest.data(), size);
    alarm(0);
    EXPECT_EQ(errno, 77);
    if (found == 1 && size > 0) return "1 " + dest.text();
    EXPECT_TRUE(dest.untouched());
    return std::to_string(found);
}

std::string look_up(const std::string &map, const std::string &alias, size_t size = IFALIAS_NAME_BUFSIZE)
{
    FILE *const stream = fmemopen(const_cast<char *>(map.data()), map.size(), "r");
    std::fgetc(stream);
    const std::string found =
        found_by([&](char *dest, size_t room) { return ifalias_to_ifl(alias.c_str(), dest, room, 0, stream); }, size);
    std::fclose(stream);
    return found;
}

std::string look_up_in_file(const std::string &path)
{
    return found_by(
        [&](char *dest, size_t size) { return orvex::find_alias_in_file(path.c_str(), "uplink", dest, size) ? 1 : 0; });
}

void write_map(int file)
{
    const std::string map = "eth-0/0/0.0 uplink x\n";
    EXPECT_EQ(write(file, map.data(), map.size()), static_cast<ssize_t>(map.size()));
}

}  // namespace

TEST(FindAliasInFile, ReadsRegularFilesOnly)
{
    const std::string path = testing::TempDir() + "orvex-map-" + std::to_string(getpid());
    EXPECT_EQ(look_up_in_file(path), "0");
    EXPECT_NE(fcntl(STDIN_FILENO, F_GETFD), -1);  // not taken for the file
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
    write_map(file);
    EXPECT_EQ(look_up_in_file(path), "1 eth-0/0/0.0");
    EXPECT_EQ(truncate64(path.c_str(), off64_t{3} << 30), 0);
    EXPECT_EQ(look_up_in_file(path), "1 eth-0/0/0.0");
    close(file);
    // The map may be file 0, and is closed after the look-up.
    const int input = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    EXPECT_EQ(look_up_in_file(path), "1 eth-0/0/0.0");
    EXPECT_EQ(fcntl(STDIN_FILENO, F_GETFD), -1);
    EXPECT_EQ(dup2(input, STDIN_FILENO), STDIN_FILENO);
    close(input);
    std::remove(path.c_str());

    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(look_up_in_file(path), "0");  // nobody writes to it
    const int writer = open(path.c_str(), O_RDWR);
    write_map(writer);
    EXPECT_EQ(look_up_in_file(path), "0");
    close(writer);
    std::remove(path.c_str());
}

TEST(IfaliasToIfl, ReadsLinesOfThreeWords)
{
    const std::string map =
        "eth-0/0/0.0 uplink x\n"
        "short line\n"
        "\n"
        " \teth-0/0/1\v\fuplink-2\r x more words\r\n"
        "first twice x\n"
        "second twice x\n"
        "no-third-word lost\nx\n" +
        std::string(70, 'n') + ' ' + std::string(140, 'a') + " x\n" +  //
        "last end x";
    for (const auto &[alias, expected] : std::vector<std::pair<std::string, std::string>>{
             {"uplink", "1 eth-0/0/0.0"},
             {"uplink-", "0"},
             {"line", "0"},
             {"uplink-2", "1 eth-0/0/1"},
             {"twice", "1 first"},
             {std::string(127, 'a'), "0"},
             {std::string(128, 'a'), "1 " + std::string(60, 'n')},
             {std::string(128, 'a') + "other", "1 " + std::string(60, 'n')},
             {"end", "1 last"},
             {"", "0"}})
        EXPECT_EQ(look_up(map, alias), expected) << alias;
    EXPECT_EQ(look_up(map, "uplink", 5), "1 eth-");
    EXPECT_EQ(look_up(map, "uplink", 1), "1 ");
    EXPECT_EQ(look_up(map, "uplink", 0), "1");
    char dest[8];
    EXPECT_EQ(ifalias_to_ifl("uplink", dest, sizeof dest, 1, nullptr), 0);
}

TEST(IfaliasToIfl, ReadsAStreamThatCannotBeRewound)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    write_map(ends[1]);
    close(ends[1]);
    FILE *const stream = fdopen(ends[0], "r");
    EXPECT_EQ(found_by([&](char *dest, size_t size) { return ifalias_to_ifl("uplink", dest, size, 0, stream); }),
              "1 eth-0/0/0.0");
    std::fclose(stream);
}

// Lines and words that lie across the ends of what is read at a time.
TEST(IfaliasToIfl, FindsEveryAliasOfALongMap)
{
    std::string map;
    std::vector<std::string> aliases;
    while (map.size() < 70000) {
        const std::string number = std::to_string(aliases.size());
        aliases.push_back("alias-" + number);
        map += "eth-" + number + std::string(1 + aliases.size() % 50, ' ') + aliases.back() + " " +
               std::string(aliases.size() % 7 * 3, 'x') + "\n";
        if (aliases.size() % 200 == 0) map += std::string(20000, aliases.size() % 400 == 0 ? 'w' : ' ') + "\n";
    }
    for (size_t i = 0; i < aliases.size(); ++i)
        EXPECT_EQ(look_up(map, aliases[i]), (i + 1) % 7 == 0 ? "0" : "1 eth-" + std::to_string(i)) << aliases[i];
}
