#version 330 core
// SPDX-License-Identifier: MIT
in vec3 vNormal;
in vec2 vTexCoord;
in vec3 vWorldPos;
uniform sampler2D qt_Texture0;
out vec4 fragColor;

void main()
{
    fragColor = vec4(texture(qt_Texture0, vTexCoord).rgb, 1.0);
}
