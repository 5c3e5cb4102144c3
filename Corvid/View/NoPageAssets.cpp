#include "Corvid/View/PageAssets.h"

namespace Corvid {

const PageAssets* GetPageAssets() {
    return nullptr;
}

} // namespace Corvid
