<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="zh_CN">
<context>
    <name>ButtonConfig</name>
    <message>
        <source>  组合键设置</source>
        <translation>  组合键设置</translation>
    </message>
    <message>
        <source>  超级组合键设置</source>
        <translation>  超级组合键设置</translation>
    </message>
    <message>
        <source>  按键属性设置</source>
        <translation>  按键属性设置</translation>
    </message>
    <message>
        <source>CKey%1:</source>
        <translation>CKey%1:</translation>
    </message>
    <message>
        <source>单步增量</source>
        <translation>单步增量</translation>
    </message>
    <message>
        <source>单态</source>
        <translation>单态</translation>
    </message>
    <message>
        <source>双态</source>
        <translation>双态</translation>
    </message>
    <message>
        <source>三态</source>
        <translation>三态</translation>
    </message>
</context>
<context>
    <name>CanFrame</name>
    <message>
        <source>标准ID</source>
        <translation>标准ID</translation>
    </message>
    <message>
        <source>扩展ID</source>
        <translation>扩展ID</translation>
    </message>
    <message>
        <source>标准标识符</source>
        <translation>标准标识符</translation>
    </message>
    <message>
        <source>扩展标识符</source>
        <translation>扩展标识符</translation>
    </message>
    <message>
        <source>数据帧</source>
        <translation>数据帧</translation>
    </message>
    <message>
        <source>远程帧</source>
        <translation>远程帧</translation>
    </message>
    <message>
        <source>标识符类型</source>
        <translation>标识符类型</translation>
    </message>
    <message>
        <source>消息类型</source>
        <translation>消息类型</translation>
    </message>
    <message>
        <source>数据长度</source>
        <translation>数据长度</translation>
    </message>
    <message>
        <source>数据解析</source>
        <translation>数据解析</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>帧 %1</source>
        <translation>帧 %1</translation>
    </message>
</context>
<context>
    <name>ChannelListenInterface</name>
    <message>
        <source>SBUS1设置</source>
        <translation>SBUS1设置</translation>
    </message>
    <message>
        <source>SBUS2设置</source>
        <translation>SBUS2设置</translation>
    </message>
    <message>
        <source>通道保持</source>
        <translation>通道保持</translation>
    </message>
    <message>
        <source>按钮设置</source>
        <translation>按钮设置</translation>
    </message>
    <message>
        <source>综合设置</source>
        <translation>综合设置</translation>
    </message>
    <message>
        <source>图传设置</source>
        <translation>图传设置</translation>
    </message>
    <message>
        <source>自定义设置</source>
        <translation>自定义设置</translation>
    </message>
    <message>
        <source>返 回</source>
        <translation>返 回</translation>
    </message>
    <message>
        <source>写入数据</source>
        <translation>写入数据</translation>
    </message>
    <message>
        <source>读取数据</source>
        <translation>读取数据</translation>
    </message>
    <message>
        <source>保存配置</source>
        <translation>保存配置</translation>
    </message>
    <message>
        <source>加载配置</source>
        <translation>加载配置</translation>
    </message>
    <message>
        <source>恢复出厂设置</source>
        <translation>恢复出厂设置</translation>
    </message>
</context>
<context>
    <name>ComprehensiveConfig</name>
    <message>
        <source>  HID设置</source>
        <translation>  HID设置</translation>
    </message>
    <message>
        <source>  油门保持</source>
        <translation>  油门保持</translation>
    </message>
    <message>
        <source>  蜂鸣器设置</source>
        <translation>  蜂鸣器设置</translation>
    </message>
    <message>
        <source>  波特率设置</source>
        <translation>  波特率设置</translation>
    </message>
    <message>
        <source>  SBUS设置</source>
        <translation>  SBUS设置</translation>
    </message>
    <message>
        <source>  关于设备</source>
        <translation>  关于设备</translation>
    </message>
    <message>
        <source>HID游戏手柄</source>
        <translation>HID游戏手柄</translation>
    </message>
    <message>
        <source>HID通讯模式</source>
        <translation>HID通讯模式</translation>
    </message>
    <message>
        <source>HID输出 :</source>
        <translation>HID输出 :</translation>
    </message>
    <message>
        <source>控制开关 :</source>
        <translation>控制开关 :</translation>
    </message>
    <message>
        <source>生效档位 :</source>
        <translation>生效档位 :</translation>
    </message>
    <message>
        <source>油门保持值 :</source>
        <translation>油门保持值 :</translation>
    </message>
    <message>
        <source>恢复速度(S) :</source>
        <translation>恢复速度(S) :</translation>
    </message>
    <message>
        <source>保持速度(S) :</source>
        <translation>保持速度(S) :</translation>
    </message>
    <message>
        <source>油门</source>
        <translation>油门</translation>
    </message>
    <message>
        <source>空闲报警 :</source>
        <translation>空闲报警 :</translation>
    </message>
    <message>
        <source>低压报警 :</source>
        <translation>低压报警 :</translation>
    </message>
    <message>
        <source>电池电压 :</source>
        <translation>电池电压 :</translation>
    </message>
    <message>
        <source>波特率 :</source>
        <translation>波特率 :</translation>
    </message>
    <message>
        <source>输出SBUS1</source>
        <translation>输出SBUS1</translation>
    </message>
    <message>
        <source>输出SBUS2</source>
        <translation>输出SBUS2</translation>
    </message>
    <message>
        <source>SBUS 输出 :</source>
        <translation>SBUS 输出 :</translation>
    </message>
    <message>
        <source>SBUS1 优先级和协议 :</source>
        <translation>SBUS1 优先级和协议 :</translation>
    </message>
    <message>
        <source>SBUS2 优先级和协议 :</source>
        <translation>SBUS2 优先级和协议 :</translation>
    </message>
    <message>
        <source>外部SBUS1 输入</source>
        <translation>外部SBUS1 输入</translation>
    </message>
    <message>
        <source>外部SBUS2 输入</source>
        <translation>外部SBUS2 输入</translation>
    </message>
    <message>
        <source>外部Sbus输入 :</source>
        <translation>外部Sbus输入 :</translation>
    </message>
    <message>
        <source>SBUS 控制开关 :</source>
        <translation>SBUS 控制开关 :</translation>
    </message>
    <message>
        <source>开关档位 :</source>
        <translation>开关档位 :</translation>
    </message>
    <message>
        <source>信号强度 :</source>
        <translation>信号强度 :</translation>
    </message>
    <message>
        <source>搜索设备</source>
        <translation>搜索设备</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>详细信息</source>
        <translation>详细信息</translation>
    </message>
    <message>
        <source>波特率设置</source>
        <translation>波特率设置</translation>
    </message>
    <message>
        <source>数据口所接设备须使用相同的波特率，确认修改吗？</source>
        <translation>数据口所接设备须使用相同的波特率，确认修改吗？</translation>
    </message>
</context>
<context>
    <name>CustomConfig</name>
    <message>
        <source>  Pyx设置</source>
        <translation>  Pyx设置</translation>
    </message>
    <message>
        <source>  CAN设置</source>
        <translation>  CAN设置</translation>
    </message>
    <message>
        <source>  自定义串口设置</source>
        <translation>  自定义串口设置</translation>
    </message>
    <message>
        <source>输出模式 : </source>
        <translation>输出模式 : </translation>
    </message>
    <message>
        <source>注意：选择SBUS输出则无法与PyxM配合使用，CAN与自定义串口失能</source>
        <translation>注意：选择SBUS输出则无法与PyxM配合使用，CAN与自定义串口失能</translation>
    </message>
    <message>
        <source>使能</source>
        <translation>使能</translation>
    </message>
    <message>
        <source>波特率 : </source>
        <translation>波特率 : </translation>
    </message>
    <message>
        <source>发送频率 :</source>
        <translation>发送频率 :</translation>
    </message>
    <message>
        <source>添加帧</source>
        <translation>添加帧</translation>
    </message>
    <message>
        <source>刷新帧</source>
        <translation>刷新帧</translation>
    </message>
    <message>
        <source>小端</source>
        <translation>小端</translation>
    </message>
    <message>
        <source>大端</source>
        <translation>大端</translation>
    </message>
    <message>
        <source>和校验</source>
        <translation>和校验</translation>
    </message>
    <message>
        <source>异或校验</source>
        <translation>异或校验</translation>
    </message>
    <message>
        <source>CRC16校验</source>
        <translation>CRC16校验</translation>
    </message>
    <message>
        <source>CRC32校验</source>
        <translation>CRC32校验</translation>
    </message>
    <message>
        <source>帧头</source>
        <translation>帧头</translation>
    </message>
    <message>
        <source>帧尾</source>
        <translation>帧尾</translation>
    </message>
    <message>
        <source>数据格式</source>
        <translation>数据格式</translation>
    </message>
    <message>
        <source>通道数据范围 : </source>
        <translation>通道数据范围 : </translation>
    </message>
    <message>
        <source>校验模式</source>
        <translation>校验模式</translation>
    </message>
    <message>
        <source>注意: 切换硬件接口前,请确保当前接口线已断开连接!!!</source>
        <translation>注意: 切换硬件接口前,请确保当前接口线已断开连接!!!</translation>
    </message>
</context>
<context>
    <name>DataWidget</name>
    <message>
        <source>保存</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>数据 %1</source>
        <translation>数据 %1</translation>
    </message>
    <message>
        <source>线性</source>
        <translation>线性</translation>
    </message>
    <message>
        <source>非线性</source>
        <translation>非线性</translation>
    </message>
    <message>
        <source>线性设置</source>
        <translation>线性设置</translation>
    </message>
    <message>
        <source>数据下标</source>
        <translation>数据下标</translation>
    </message>
    <message>
        <source>通道映射</source>
        <translation>通道映射</translation>
    </message>
    <message>
        <source>非线性设置</source>
        <translation>非线性设置</translation>
    </message>
    <message>
        <source>数据解析 - %1</source>
        <translation>数据解析 - %1</translation>
    </message>
    <message>
        <source>保存数据解析</source>
        <translation>保存数据解析</translation>
    </message>
    <message>
        <source>确认要保存数据解析吗！</source>
        <translation>确认要保存数据解析吗！</translation>
    </message>
</context>
<context>
    <name>EditTracker</name>
    <message>
        <source>有修改尚未写入遥控器</source>
        <translation>有修改尚未写入遥控器</translation>
    </message>
    <message>
        <source>、</source>
        <translation>、</translation>
    </message>
    <message>
        <source>返回前要写入吗？</source>
        <translation>返回前要写入吗？</translation>
    </message>
    <message>
        <source>关闭前要写入吗？</source>
        <translation>关闭前要写入吗？</translation>
    </message>
    <message>
        <source>遥控器已重新连接，页面将重建。要先写入吗？</source>
        <translation>遥控器已重新连接，页面将重建。要先写入吗？</translation>
    </message>
    <message>
        <source>以下页面有修改尚未写入遥控器：%1</source>
        <translation>以下页面有修改尚未写入遥控器：%1</translation>
    </message>
    <message>
        <source>写入</source>
        <translation>写入</translation>
    </message>
    <message>
        <source>放弃修改</source>
        <translation>放弃修改</translation>
    </message>
    <message>
        <source>留下</source>
        <translation>留下</translation>
    </message>
    <message>
        <source>未写入的修改</source>
        <translation>未写入的修改</translation>
    </message>
</context>
<context>
    <name>HelpWidget</name>
    <message>
        <source>Help Guide</source>
        <translation>Help Guide</translation>
    </message>
    <message>
        <source>通道配置</source>
        <translation>通道配置</translation>
    </message>
    <message>
        <source>SBUS设置</source>
        <translation>SBUS设置</translation>
    </message>
    <message>
        <source>通道保持</source>
        <translation>通道保持</translation>
    </message>
    <message>
        <source>按键设置</source>
        <translation>按键设置</translation>
    </message>
    <message>
        <source>综合设置</source>
        <translation>综合设置</translation>
    </message>
    <message>
        <source>图传设置</source>
        <translation>图传设置</translation>
    </message>
    <message>
        <source>自定义设置</source>
        <translation>自定义设置</translation>
    </message>
    <message>
        <source>版权信息</source>
        <translation>版权信息</translation>
    </message>
    <message>
        <source>帮助说明</source>
        <translation>帮助说明</translation>
    </message>
</context>
<context>
    <name>LinkPlot</name>
    <message>
        <source>导出 CSV…</source>
        <translation>导出 CSV…</translation>
    </message>
    <message>
        <source>保存图表…</source>
        <translation>保存图表…</translation>
    </message>
    <message>
        <source>绘制的数值</source>
        <translation>绘制的数值</translation>
    </message>
    <message>
        <source>时间范围</source>
        <translation>时间范围</translation>
    </message>
    <message>
        <source>1 分钟</source>
        <translation>1 分钟</translation>
    </message>
    <message>
        <source>5 分钟</source>
        <translation>5 分钟</translation>
    </message>
    <message>
        <source>30 分钟</source>
        <translation>30 分钟</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>CSV 文件 (*.csv)</source>
        <translation>CSV 文件 (*.csv)</translation>
    </message>
    <message>
        <source>PNG 图片 (*.png)</source>
        <translation>PNG 图片 (*.png)</translation>
    </message>
    <message>
        <source>无法写入 %1</source>
        <translation>无法写入 %1</translation>
    </message>
</context>
<context>
    <name>MDlg</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>是</source>
        <translation>是</translation>
    </message>
    <message>
        <source>否</source>
        <translation>否</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Remote control unit is connecting...</source>
        <translation>Remote control unit is connecting...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;a href=&quot;&quot;&gt;&lt;span style=&quot; font-style:italic; text-decoration: underline; color:#0000ff;&quot;&gt;Welcome to the official website&lt;/span&gt;&lt;/a&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;a href=&quot;&quot;&gt;&lt;span style=&quot; font-style:italic; text-decoration: underline; color:#0000ff;&quot;&gt;Welcome to the official website&lt;/span&gt;&lt;/a&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>写入数据</source>
        <translation>写入数据</translation>
    </message>
    <message>
        <source>确认要写入数据吗!</source>
        <translation>确认要写入数据吗!</translation>
    </message>
    <message>
        <source>正在写入中...</source>
        <translation>正在写入中...</translation>
    </message>
    <message>
        <source>写入中...</source>
        <translation>写入中...</translation>
    </message>
    <message>
        <source>恢复出厂设置</source>
        <translation>恢复出厂设置</translation>
    </message>
    <message>
        <source>确认要恢复出厂设置吗！</source>
        <translation>确认要恢复出厂设置吗！</translation>
    </message>
    <message>
        <source>写入配置文件</source>
        <translation>写入配置文件</translation>
    </message>
    <message>
        <source>确认要写入配置文件参数吗！</source>
        <translation>确认要写入配置文件参数吗！</translation>
    </message>
</context>
<context>
    <name>ModelInterface</name>
    <message>
        <source>遥杆校准</source>
        <translation>遥杆校准</translation>
    </message>
    <message>
        <source>通道配置</source>
        <translation>通道配置</translation>
    </message>
    <message>
        <source>完成校准</source>
        <translation>完成校准</translation>
    </message>
</context>
<context>
    <name>PhaseSwitch</name>
    <message>
        <source>正</source>
        <translation>正</translation>
    </message>
    <message>
        <source>负</source>
        <translation>负</translation>
    </message>
</context>
<context>
    <name>RFParaConfig</name>
    <message>
        <source>模块IP :</source>
        <translation>模块IP :</translation>
    </message>
    <message>
        <source>连接/断开</source>
        <translation>连接/断开</translation>
    </message>
    <message>
        <source>打开/关闭设备</source>
        <translation>打开/关闭设备</translation>
    </message>
    <message>
        <source>当前值 : [    ]</source>
        <translation>当前值 : [    ]</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>重启设备</source>
        <translation>重启设备</translation>
    </message>
    <message>
        <source>频段设置</source>
        <translation>频段设置</translation>
    </message>
    <message>
        <source>秘钥设置（十六进制输入，即0~9，A~F或a~f，长度不超过64个字符，即32个字节。必须偶数）</source>
        <translation>秘钥设置（十六进制输入，即0~9，A~F或a~f，长度不超过64个字符，即32个字节。必须偶数）</translation>
    </message>
    <message>
        <source>主从设置</source>
        <translation>主从设置</translation>
    </message>
    <message>
        <source>当前类型 : [    ]</source>
        <translation>当前类型 : [    ]</translation>
    </message>
    <message>
        <source>工作类型 : [    ]</source>
        <translation>工作类型 : [    ]</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>中心节点</source>
        <translation>中心节点</translation>
    </message>
    <message>
        <source>接入节点</source>
        <translation>接入节点</translation>
    </message>
    <message>
        <source>IP设置</source>
        <translation>IP设置</translation>
    </message>
    <message>
        <source>当前IP : [    ]</source>
        <translation>当前IP : [    ]</translation>
    </message>
    <message>
        <source>跳频设置</source>
        <translation>跳频设置</translation>
    </message>
    <message>
        <source>（仅中心节点）</source>
        <translation>（仅中心节点）</translation>
    </message>
    <message>
        <source>上下行设置</source>
        <translation>上下行设置</translation>
    </message>
    <message>
        <source>最大发射功率设置</source>
        <translation>最大发射功率设置</translation>
    </message>
    <message>
        <source>（仅接入节点）</source>
        <translation>（仅接入节点）</translation>
    </message>
    <message>
        <source>建链组设置</source>
        <translation>建链组设置</translation>
    </message>
    <message>
        <source>带宽设置 :</source>
        <translation>带宽设置 :</translation>
    </message>
    <message>
        <source>功率设置(- 40 ~ 40) :</source>
        <translation>功率设置(- 40 ~ 40) :</translation>
    </message>
    <message>
        <source>频点设置(24015 ~ 24814, 8060 ~ 8259, 14279 ~ 14678) :</source>
        <translation>频点设置(24015 ~ 24814, 8060 ~ 8259, 14279 ~ 14678) :</translation>
    </message>
    <message>
        <source>DSONSCAP设置</source>
        <translation>DSONSCAP设置</translation>
    </message>
    <message>
        <source>当前状态: [    ]</source>
        <translation>当前状态: [    ]</translation>
    </message>
    <message>
        <source>不支持CA和MIMO</source>
        <translation>不支持CA和MIMO</translation>
    </message>
    <message>
        <source>支持CA</source>
        <translation>支持CA</translation>
    </message>
    <message>
        <source>支持MIMO</source>
        <translation>支持MIMO</translation>
    </message>
    <message>
        <source>支持CA和MIMO</source>
        <translation>支持CA和MIMO</translation>
    </message>
    <message>
        <source>DRPR 上报日志</source>
        <translation>DRPR 上报日志</translation>
    </message>
    <message>
        <source>打开日志窗口</source>
        <translation>打开日志窗口</translation>
    </message>
    <message>
        <source>AT指令调试接口</source>
        <translation>AT指令调试接口</translation>
    </message>
    <message>
        <source>AT指令 :</source>
        <translation>AT指令 :</translation>
    </message>
    <message>
        <source>发送</source>
        <translation>发送</translation>
    </message>
    <message>
        <source>连接失败</source>
        <translation>连接失败</translation>
    </message>
    <message>
        <source>无法访问主机</source>
        <translation>无法访问主机</translation>
    </message>
    <message>
        <source>更新</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>更新失败</source>
        <translation>更新失败</translation>
    </message>
    <message>
        <source>更新成功</source>
        <translation>更新成功</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>请选择一个选项!</source>
        <translation>请选择一个选项!</translation>
    </message>
    <message>
        <source>请选择一个频段!</source>
        <translation>请选择一个频段!</translation>
    </message>
    <message>
        <source>十六进制输入，即0~9，A~F或a~f，长度不超过64个字符，即32个字节。必须偶数</source>
        <translation>十六进制输入，即0~9，A~F或a~f，长度不超过64个字符，即32个字节。必须偶数</translation>
    </message>
    <message>
        <source>请输入完整的IP地址!</source>
        <translation>请输入完整的IP地址!</translation>
    </message>
    <message>
        <source>请输入AT指令!</source>
        <translation>请输入AT指令!</translation>
    </message>
    <message>
        <source>当前值 : </source>
        <translation>当前值 : </translation>
    </message>
    <message>
        <source>当前类型 : </source>
        <translation>当前类型 : </translation>
    </message>
    <message>
        <source>工作类型 : </source>
        <translation>工作类型 : </translation>
    </message>
    <message>
        <source>当前IP: </source>
        <translation>当前IP: </translation>
    </message>
    <message>
        <source>当前值(- 40 ~ 40) : </source>
        <translation>当前值(- 40 ~ 40) : </translation>
    </message>
    <message>
        <source>当前状态: </source>
        <translation>当前状态: </translation>
    </message>
    <message>
        <source>全部刷新</source>
        <translation>全部刷新</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>依次刷新每一行</source>
        <translation>依次刷新每一行</translation>
    </message>
    <message>
        <source>已发送的指令，双击放回输入框</source>
        <translation>已发送的指令，双击放回输入框</translation>
    </message>
</context>
<context>
    <name>RFRadioConfig</name>
    <message>
        <source>电源控制 : </source>
        <translation>电源控制 : </translation>
    </message>
    <message>
        <source>电源物理开关控制 : </source>
        <translation>电源物理开关控制 : </translation>
    </message>
    <message>
        <source>重置地面端模块 : </source>
        <translation>重置地面端模块 : </translation>
    </message>
    <message>
        <source>重置天空端模块 : </source>
        <translation>重置天空端模块 : </translation>
    </message>
    <message>
        <source>模块参数配置 : </source>
        <translation>模块参数配置 : </translation>
    </message>
    <message>
        <source>重置</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>配置</source>
        <translation>配置</translation>
    </message>
    <message>
        <source>地面端模组恢复出厂设置成功</source>
        <translation>地面端模组恢复出厂设置成功</translation>
    </message>
    <message>
        <source>地面端模组恢复出厂设置失败</source>
        <translation>地面端模组恢复出厂设置失败</translation>
    </message>
    <message>
        <source>天空端模块恢复出厂设置成功</source>
        <translation>天空端模块恢复出厂设置成功</translation>
    </message>
    <message>
        <source>天空端模块恢复出厂设置失败</source>
        <translation>天空端模块恢复出厂设置失败</translation>
    </message>
    <message>
        <source>重置图传模块</source>
        <translation>重置图传模块</translation>
    </message>
    <message>
        <source>确认要重置地面端模块吗！</source>
        <translation>确认要重置地面端模块吗！</translation>
    </message>
    <message>
        <source>确认要重置天空端模块吗！</source>
        <translation>确认要重置天空端模块吗！</translation>
    </message>
</context>
<context>
    <name>SbusConfig</name>
    <message>
        <source>舵机相位</source>
        <translation>舵机相位</translation>
    </message>
    <message>
        <source>中点微调</source>
        <translation>中点微调</translation>
    </message>
    <message>
        <source>舵机行程量</source>
        <translation>舵机行程量</translation>
    </message>
    <message>
        <source>失控保护</source>
        <translation>失控保护</translation>
    </message>
    <message>
        <source> To :</source>
        <translation> To :</translation>
    </message>
</context>
<context>
    <name>SbusHold</name>
    <message>
        <source>控制开关：</source>
        <translation>控制开关：</translation>
    </message>
    <message>
        <source>保持档位：</source>
        <translation>保持档位：</translation>
    </message>
</context>
<context>
    <name>canReceive</name>
    <message>
        <source>接收计数 :</source>
        <translation>接收计数 :</translation>
    </message>
    <message>
        <source>标识符类型</source>
        <translation>标识符类型</translation>
    </message>
    <message>
        <source>标准ID</source>
        <translation>标准ID</translation>
    </message>
    <message>
        <source>扩展ID</source>
        <translation>扩展ID</translation>
    </message>
    <message>
        <source>数据类型</source>
        <translation>数据类型</translation>
    </message>
</context>
<context>
    <name>PortChooser</name>
    <message>
        <source>刷新</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>连接</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>串口路径，例如 /dev/ttyUSB0</source>
        <translation>串口路径，例如 /dev/ttyUSB0</translation>
    </message>
    <message>
        <source>选择遥控器所在的串口，或输入它的路径</source>
        <translation>选择遥控器所在的串口，或输入它的路径</translation>
    </message>
    <message>
        <source>串口：</source>
        <translation>串口：</translation>
    </message>
</context>
<context>
    <name>PortProblem</name>
    <message>
        <source>未设置串口：请在下面选择遥控器的串口。</source>
        <translation>未设置串口：请在下面选择遥控器的串口。</translation>
    </message>
    <message>
        <source>%1：没有这个设备（未连接，或路径有误）。</source>
        <translation>%1：没有这个设备（未连接，或路径有误）。</translation>
    </message>
    <message>
        <source>%1：没有权限打开。请把用户加入 dialout 组（sudo usermod -aG dialout $USER），然后重新登录。</source>
        <translation>%1：没有权限打开。请把用户加入 dialout 组（sudo usermod -aG dialout $USER），然后重新登录。</translation>
    </message>
    <message>
        <source>%1：正被另一个程序使用，请先关闭那个程序。</source>
        <translation>%1：正被另一个程序使用，请先关闭那个程序。</translation>
    </message>
    <message>
        <source>%1：无法打开（%2）。</source>
        <translation>%1：无法打开（%2）。</translation>
    </message>
    <message>
        <source>未设置串口</source>
        <translation>未设置串口</translation>
    </message>
    <message>
        <source>没有这个设备</source>
        <translation>没有这个设备</translation>
    </message>
    <message>
        <source>没有权限</source>
        <translation>没有权限</translation>
    </message>
    <message>
        <source>被另一个程序占用</source>
        <translation>被另一个程序占用</translation>
    </message>
    <message>
        <source>无法打开</source>
        <translation>无法打开</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>端口：未设置</source>
        <translation>端口：未设置</translation>
    </message>
    <message>
        <source>端口：%1</source>
        <translation>端口：%1</translation>
    </message>
    <message>
        <source>Alder</source>
        <translation>Alder</translation>
    </message>
    <message>
        <source>Birch</source>
        <translation>Birch</translation>
    </message>
    <message>
        <source>Cedar</source>
        <translation>Cedar</translation>
    </message>
    <message>
        <source>Larch</source>
        <translation>Larch</translation>
    </message>
    <message>
        <source>Maple</source>
        <translation>Maple</translation>
    </message>
    <message>
        <source>Rowan</source>
        <translation>Rowan</translation>
    </message>
    <message>
        <source>Willow</source>
        <translation>Willow</translation>
    </message>
    <message>
        <source>无无线模块</source>
        <translation>无无线模块</translation>
    </message>
    <message>
        <source>无线模块</source>
        <translation>无线模块</translation>
    </message>
    <message>
        <source>输出模块</source>
        <translation>输出模块</translation>
    </message>
    <message>
        <source>%1，%2</source>
        <translation>%1，%2</translation>
    </message>
    <message>
        <source>未连接</source>
        <translation>未连接</translation>
    </message>
    <message>
        <source>未连接：%1</source>
        <translation>未连接：%1</translation>
    </message>
    <message>
        <source>连接中…</source>
        <translation>连接中…</translation>
    </message>
    <message>
        <source>已连接</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>连接已断开</source>
        <translation>连接已断开</translation>
    </message>
    <message>
        <source>正在重新连接…</source>
        <translation>正在重新连接…</translation>
    </message>
    <message>
        <source>SBUS 1</source>
        <translation>SBUS 1</translation>
    </message>
    <message>
        <source>SBUS 2</source>
        <translation>SBUS 2</translation>
    </message>
    <message>
        <source>通道保持</source>
        <translation>通道保持</translation>
    </message>
    <message>
        <source>按钮设置</source>
        <translation>按钮设置</translation>
    </message>
    <message>
        <source>综合设置</source>
        <translation>综合设置</translation>
    </message>
    <message>
        <source>图传设置</source>
        <translation>图传设置</translation>
    </message>
    <message>
        <source>自定义设置</source>
        <translation>自定义设置</translation>
    </message>
    <message>
        <source>读取%1 — 1 个应答</source>
        <translation>读取%1 — 1 个应答</translation>
    </message>
    <message>
        <source>读取%1 — %2 个应答</source>
        <translation>读取%1 — %2 个应答</translation>
    </message>
    <message>
        <source>已恢复出厂设置，重新读取%1 — %2 个应答</source>
        <translation>已恢复出厂设置，重新读取%1 — %2 个应答</translation>
    </message>
    <message>
        <source>已写入%1</source>
        <translation>已写入%1</translation>
    </message>
    <message>
        <source>未写入%1：页面给出的参数个数不对</source>
        <translation>未写入%1：页面给出的参数个数不对</translation>
    </message>
    <message>
        <source>设备拒绝：%1</source>
        <translation>设备拒绝：%1</translation>
    </message>
    <message>
        <source>全部写入：第 %1 帧，共 %2 帧…</source>
        <translation>全部写入：第 %1 帧，共 %2 帧…</translation>
    </message>
    <message>
        <source>全部写入中断：%1 帧（共 %2 帧）后端口已关闭</source>
        <translation>全部写入中断：%1 帧（共 %2 帧）后端口已关闭</translation>
    </message>
    <message>
        <source>全部写入完成：%1 帧，其中 %2 帧被设备拒绝</source>
        <translation>全部写入完成：%1 帧，其中 %2 帧被设备拒绝</translation>
    </message>
    <message>
        <source>全部写入完成：%1 帧</source>
        <translation>全部写入完成：%1 帧</translation>
    </message>
    <message>
        <source>已加载 %1，到第 %2 行为止（此后文件已损坏）</source>
        <translation>已加载 %1，到第 %2 行为止（此后文件已损坏）</translation>
    </message>
    <message>
        <source>已加载 %1：%2 组</source>
        <translation>已加载 %1：%2 组</translation>
    </message>
    <message>
        <source>无法打开 %1</source>
        <translation>无法打开 %1</translation>
    </message>
    <message>
        <source>已保存 %1</source>
        <translation>已保存 %1</translation>
    </message>
    <message>
        <source>无法保存 %1</source>
        <translation>无法保存 %1</translation>
    </message>
    <message>
        <source>已备份：%1</source>
        <translation>已备份：%1</translation>
    </message>
    <message>
        <source>备份失败：%1</source>
        <translation>备份失败：%1</translation>
    </message>
</context>
</TS>
