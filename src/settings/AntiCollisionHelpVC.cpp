#include "settings/AntiCollisionHelpVC.h"

namespace ostrel {

AntiCollisionHelpVC::AntiCollisionHelpVC(DeskControlVC* fatherVC)
    : SettingHelpPage(
          fatherVC, tr("Anti-collision function"),
          tr("When the desk meets an obstacle while moving, it stops and moves back a little, so "
             "that nothing is trapped or damaged.\n\n"
             "The sensitivity sets how hard the desk must push before it reacts. \"High\" reacts "
             "to the lightest touch; choose \"Low\" if the desk stops by itself under a heavy "
             "load.\n\n"
             "With the function off, the desk only stops when you let go of the key.")) {}

} // namespace ostrel
