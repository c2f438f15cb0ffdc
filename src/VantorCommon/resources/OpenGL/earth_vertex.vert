#version 330 core
// SPDX-License-Identifier: MIT
// The globe.
layout (location = 0) in vec3 aPos;
layout (location = 1) in vec3 aNormal;
layout (location = 2) in vec2 aTexCoord;
uniform mat4 model;
uniform mat4 view;
uniform mat4 projection;
out vec3 vNormal;
out vec2 vTexCoord;
out vec3 vWorldPos;

void main()
{
    vec4 world = model * vec4(aPos, 1.0);
    vNormal = mat3(transpose(inverse(model))) * aNormal;
    vTexCoord = aTexCoord;
    vWorldPos = world.xyz;
    gl_Position = projection * view * world;
}
