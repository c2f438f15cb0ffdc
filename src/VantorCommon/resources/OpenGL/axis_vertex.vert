#version 330 core
// SPDX-License-Identifier: MIT
// Axes and reference shape: one colour for everything.
layout (location = 0) in vec3 aPos;
uniform mat4 model;
uniform mat4 view;
uniform mat4 projection;

void main()
{
    gl_Position = projection * view * model * vec4(aPos, 1.0);
}
