#include "Families.h"

#include "ZevrinUtils/SimpleMapi.h"

void ShowMailAndPicker(Guide& oGuide, const Surroundings&)
{
    oGuide.Show("is there a mail system?", [] { return Judged(true, CSIMapi::HasEmail() ? "yes" : "no"); });
    // What a user has to answer is named, so that nobody takes it for shown.
    oGuide.Show("show a message in the mail client", [] { return LeftOut("needs you: zvu mail --to NAME"); });
    oGuide.Show("let a user pick a folder", [] { return LeftOut("needs you: zvu pick-folder"); });
}
