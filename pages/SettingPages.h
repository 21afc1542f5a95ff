#pragma once

class QWidget;
class SettingPage;

// The page of a hub section (Sbus1 .. CustomOutput), created as a child of
// parent; nullptr for a section that has no page. Sections 0 and 1 share one
// page: ask for section 0 and give it both.
SettingPage *createSettingPage(int section, QWidget *parent);
