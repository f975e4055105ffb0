// The smallest host: starts the module, registers its controls, asks it a
// question and runs a creator's getters.
#include <boundary/bravikapp.h>
#include <boundary/detachstudyparamdlgcreator.h>
#include <boundary/registercontrols.h>

#include <cwinapp.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (AfxStartModules() != 0 || !BravikApp().IsStarted())
        return 1;
    TavCreator::RegisterControls::RegisterPicker();
    TavCreator::DetachStudyParamDlgCreator creator;
    std::printf("host says: %s\n", CBravikApp::GetUnlinkPatientConfirmationMsg().GetString());
    std::printf("reason before any run: '%s'\n", creator.GetReason());
    const int unregistered = TavCreator::RegisterControls::UnRegisterPicker();
    AfxStopModules();
    return unregistered ? 0 : 1;
}
