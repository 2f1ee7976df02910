#include "provider/common/broker.h"

const CMPIBroker* _broker = nullptr;
