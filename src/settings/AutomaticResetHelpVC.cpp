#include "settings/AutomaticResetHelpVC.h"

namespace ostrel {

AutomaticResetHelpVC::AutomaticResetHelpVC(DeskControlVC* fatherVC)
    : SettingHelpPage(
          fatherVC, tr("Automatic reset"),
          tr("When the desk shows \"RST\", it has lost track of its height and must be reset.\n\n"
             "Clear the space under the desk, then press and hold the Down key until the desk "
             "reaches its lowest position, moves up slightly and stops. Release the key: the "
             "desk is ready again.\n\n"
             "A reset also clears the height presets stored on the desk.")) {}

} // namespace ostrel
