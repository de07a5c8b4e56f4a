// A program for tests that start one: after a moment it writes its arguments to the file that the second of them
// names, and ends with their count. On Windows it stands in for xcopy, which the system looks for here first.
#include <chrono>
#include <fstream>
#include <thread>

int main(int nArguments, char** ppArguments)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    std::ofstream oFile(ppArguments[2]);
    for (int n = 1; n < nArguments; ++n)
        oFile << '<' << ppArguments[n] << '>';
    return nArguments - 1;
}
