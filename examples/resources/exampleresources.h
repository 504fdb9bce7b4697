#pragma once

/**
 * Makes the pictures of this folder known to Qt under ":/pic".
 *
 * The linker would leave them out of a program that asks for them only by name. More than one call
 * does no harm.
 */
void initExampleResources();
