#include "simulator/SimulatorApplication.h"

int main(int argc, char* argv[])
{
    return Simulator::runSimulator(argc, argv);
}
