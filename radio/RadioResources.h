#pragma once

// The radio windows' icons are compiled into the qm_radio library; a static
// library's resources have to be registered before the first window uses
// them. Every radio window's constructor calls this (it may be called often).
void initRadioResources();
