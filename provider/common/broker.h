// The CIM server's broker, and the CMPI headers that all of the provider uses.
#pragma once

#include <cmpidt.h>
#include <cmpift.h>

/// The broker that the factories were given; null until the CIM server has called one. The last one given wins.
extern "C" __attribute__((visibility("default"))) const CMPIBroker* _broker;
