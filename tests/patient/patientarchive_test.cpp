#include "patientfixture.h"
