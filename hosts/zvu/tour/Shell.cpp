// The tour's stops at the desktop, which only name the commands: a tour that nobody answers opens no window.
#include "Families.h"

#include "ZevrinUtils/SimpleMapi.h"

void ShowMailAndPicker(Guide& oGuide, const Surroundings&)
{
    oGuide.Show("is there a mail system?", [] { return Judged(true, CSIMapi::HasEmail() ? "yes" : "no"); });
    // Stops that need a user are listed as left out, so that nobody takes them for shown.
    oGuide.Show("show a message in the mail client", [] { return LeftOut("needs you: zvu mail --to NAME"); });
    oGuide.Show("let a user pick a folder", [] { return LeftOut("needs you: zvu pick-folder"); });
}
