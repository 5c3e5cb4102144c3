#pragma once

#ifndef _WIN32

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace Corvid {

// A copy of this process, for what cannot be undone: limits, other users, death.
class ChildProcess {
public:
    template <class Body> // its result, below 128, is the exit status
    explicit ChildProcess(Body body) : m_Id(fork()) {
        if (m_Id == 0)
            _exit(body());
    }
    ~ChildProcess() { Wait(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    void Kill() const { kill(m_Id, SIGKILL); }

    // The exit status, or the number of the signal that ended it less 256.
    int Wait() {
        int status = 0;
        if (m_Id > 0 && waitpid(m_Id, &status, 0) == m_Id)
            m_Result = WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status) - 256;
        m_Id = -1;
        return m_Result;
    }

private:
    pid_t m_Id;
    int m_Result = -1;
};

} // namespace Corvid

#endif
