#include "zephyr/common/StringUtil.h"
#include "zephyr/common/SystemPaths.h"

#include <iostream>

int main()
{
    std::cout << zephyr::StringUtil::toString(zephyr::executableDir()) << '\n'
              << zephyr::StringUtil::toString(zephyr::currentDir()) << '\n';
}
