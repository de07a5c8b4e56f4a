// Holds a critical section for a scope, so that an exception leaves no lock entered.
#pragma once

#include "ZevrinUtils/CritSection.h"

class CSHold
{
public:
    explicit CSHold(CSCritSection& oSection) : m_oSection(oSection) { m_oSection.enter(); }
    ~CSHold() { m_oSection.leave(); }
    CSHold(const CSHold&) = delete;
    CSHold& operator=(const CSHold&) = delete;

private:
    CSCritSection& m_oSection;
};
