#pragma once

/// Lets this thread make objects of registered classes.
void StartComponents();

/// Makes an off-screen context current, on whatever renderer the machine has. \param side pixels of the square picture
/// \return false where the machine has none
bool OpenContext(int side);
