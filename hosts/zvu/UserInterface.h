// What a program does once before it shows windows.
#pragma once

// False if the system refuses.
bool StartUserInterface();
