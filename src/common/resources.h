#pragma once

/// Makes the images below ":/Kelmoran/Icons/" known. A static library's resources are not there
/// until somebody asks for them; asking twice does no harm.
void initResources();
