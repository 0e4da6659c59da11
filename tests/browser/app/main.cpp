#include "Stage.h"

int main() {
    return pelta::runApplication(
        [](pelta::UIWindow& window) { pelta::browser::Stage::shared().setWindow(window); });
}
