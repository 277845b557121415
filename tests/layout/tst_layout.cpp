#include "layout/LayoutTest.h"

int main(int argc, char* argv[])
{
    return runLayoutTest(argc, argv, LAYOUT_SCALE);
}
