#ifndef OXAUTILS_RESOURCE_DEVICE_FACTS_H
#define OXAUTILS_RESOURCE_DEVICE_FACTS_H

class QString;

namespace OXA_TOOL {

/// Whether the block SRAMs of the device named `device` have 9 kbit instead of 18.
bool hasBlocksOf9k(const QString& device);

}

#endif
