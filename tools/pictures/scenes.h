#pragma once

/// What an operator does on each kind of line while the pictures are taken; see docs/manual/pictures.txt.
void centreScene();
void switchedScene();
void directScene();
void nervaScene();
void adapterScene();
