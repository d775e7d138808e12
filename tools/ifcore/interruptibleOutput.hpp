#pragma once

#include "endSignals.hpp"

#include <streambuf>
#include <string>

namespace ifcoreTool {

/// For a stream to a file of the system that may be a pipe: writing gives up, and the stream fails, when nobody reads
/// for a second although a signal to end has come.
class InterruptibleOutput : public std::streambuf {
public:
    /// Neither is owned.
    InterruptibleOutput(int descriptor, EndSignals& signals) : m_descriptor(descriptor), m_signals(signals) {}

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(char const* text, std::streamsize count) override;
    int sync() override;

private:
    bool WaitForReader();

    int m_descriptor;
    EndSignals& m_signals;
    std::string m_text; // not written yet
};

} // namespace ifcoreTool
