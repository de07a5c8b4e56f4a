// A line on standard error that shows how far a transfer is, so that a long one is not taken for one that hangs.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

// A bar with bytes, rate and time left while the size is known, otherwise a count with the rate. Shows itself
// after a moment, so that short transfers stay silent, and leaves the terminal with an ended line.
class Progress
{
public:
    // bShown: false keeps it silent
    explicit Progress(bool bShown);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // The announced size. It counts as unknown as soon as more than that has arrived.
    void Expect(std::uint64_t nBytes) { m_nExpected = nBytes; }

    void Add(std::uint64_t nBytes);

private:
    using Clock = std::chrono::steady_clock;

    void Draw();

    bool m_bShown;
    bool m_bDrawn = false;
    std::uint64_t m_nExpected = 0;
    std::uint64_t m_nBytes = 0;
    Clock::time_point m_nStart = Clock::now();
    Clock::time_point m_nNextDraw;
};

// The line itself; nExpected is 0 for an unknown size.
std::string ProgressText(std::uint64_t nBytes, std::uint64_t nExpected, double nSeconds);
