#include "patientdetailrecord.h"

BDate PatientDetailRecord::GetDateOfDeath() const
{
    if (m_deathYear <= 0 || m_deathMonth <= 0 || m_deathDay <= 0)
        return BDate();
    BDate d(static_cast<unsigned>(m_deathYear), static_cast<unsigned>(m_deathMonth), static_cast<unsigned>(m_deathDay));
    return d.IsValid() ? d : BDate();
}
