#version 330 core
// SPDX-License-Identifier: MIT
in vec3 vColor;
out vec4 fragColor;

void main()
{
    fragColor = vec4(vColor, 1.0);
}
