#include "app/desktop/Launch.h"

int main(int count, char** arguments) {
    return tolvane::app::launch(count, arguments);
}
