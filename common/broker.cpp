#include "common/broker.h"

const CMPIBroker* _broker = nullptr;
