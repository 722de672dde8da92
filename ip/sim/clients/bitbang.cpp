// SPDX-License-Identifier: Apache-2.0
#include "bitbang.h"

namespace oxa_target {

namespace {

constexpr size_t kAnswersAtOnce = 1024; // so that a waiting client sees progress

}

bool Bitbang::step()
{
    const std::string& input = m_socket.input;
    while (m_done < input.size()) {
        const char command = input[m_done++];
        if (command >= '0' && command <= '7') {
            m_pads.drive(command & 4, command & 2, command & 1);
            return true;
        }
        if (command == 'R') {
            m_answers += m_pads.tdo() ? '1' : '0';
            if (m_answers.size() == kAnswersAtOnce)
                sendAnswers();
        } else if (command == 'Q') {
            flush();
            m_socket.dropClient();
        }
        // Other commands blink a light or drive resets that this port does not have.
    }
    flush();
    return false;
}

void Bitbang::sendAnswers()
{
    m_socket.send(m_answers);
    m_answers.clear();
}

void Bitbang::flush()
{
    sendAnswers();
    m_socket.input.clear();
    m_done = 0;
}

}
