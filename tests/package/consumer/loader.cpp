// SPDX-License-Identifier: Apache-2.0
// Uses the textures and nothing of the platform.
#include <vDDSImage.h>

int main() {
    vDDSImage image;
    return image.load("absent.dds", false, false) ? 1 : 0;
}
