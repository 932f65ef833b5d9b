#include "app/StartRoutine.h"

int main(int argc, char** argv) {
    return kalvo::Main(argc, argv);
}
