#include "views/ViewTypes.h"

// The build makes one for each module.
extern void qml_register_types_Kelpa_Appearance();
extern void qml_register_types_Kelpa_Scene();
extern void qml_register_types_Kelpa_Controls();
extern void qml_register_types_Kelpa_Goals();
extern void qml_register_types_Kelpa_Todos();
extern void qml_register_types_Kelpa_Windows();
extern void qml_register_types_Kelpa_Board();

namespace kelpa {

void registerViewTypes()
{
    qml_register_types_Kelpa_Appearance();
    qml_register_types_Kelpa_Scene();
    qml_register_types_Kelpa_Controls();
    qml_register_types_Kelpa_Goals();
    qml_register_types_Kelpa_Todos();
    qml_register_types_Kelpa_Windows();
    qml_register_types_Kelpa_Board();
}

} // namespace kelpa
