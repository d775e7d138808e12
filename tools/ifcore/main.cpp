#include "program.hpp"

int main(int argc, char** argv)
{
    return ifcoreTool::RunProgram(argc, argv);
}
