#include "Tests/Corvid/Program/ProgramFixture.h"

#ifdef __linux__
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

namespace Corvid {

namespace {

// As on systems where a file without a name gets one by its descriptor for privileged users only.
bool ForbidNamesByDescriptor() {
    sock_filter rules[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                           BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_linkat, 0, 3),
                           BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[4])),
                           BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, AT_EMPTY_PATH, 0, 1),
                           BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOENT),
                           BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog filter = {std::size(rules), rules};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

} // namespace

class NamelessFileDeathTest : public ProgramFixture {};

// Each thread has descriptors of its own, so a number of one is another file to the others.
TEST_F(NamelessFileDeathTest, EachThreadNamesItsOwnFile) {
    constexpr int kCount = 300;
    const auto name = [](int i) { return "f" + std::to_string(i) + ".particle"; };
    const std::string example = Example("Particle/ReactorBlast.particle");
    const std::string line = "TotalLifeTime 6.000000";
    for (int i = 0; i < kCount; ++i) {
        std::string text = example;
        text.replace(text.find(line), line.size(), "TotalLifeTime " + std::to_string(i) + ".000000");
        Put("in/" + name(i), text);
    }
    ASSERT_EQ(Corvid({"convert", "--to", "bin", "-j", "1", "-o", "one/", "in"}).m_Status, 0);
    const auto run = [&] {
        if (!ForbidNamesByDescriptor())
            std::exit(2);
        int wrong = Corvid({"convert", "--to", "bin", "-j", "3", "-o", "many/", "in"}).m_Status;
        for (int i = 0; i < kCount; ++i)
            wrong += Get("many/" + name(i)) != Get("one/" + name(i));
        std::exit(wrong == 0 ? 0 : 1);
    };
    EXPECT_EXIT(run(), ::testing::ExitedWithCode(0), "");
}

} // namespace Corvid
#endif
