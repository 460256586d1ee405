#include "App/NimbrelApp.h"

int main(int argc, char** argv) { return Nimbrel::runNimbrel(argc, argv); }
